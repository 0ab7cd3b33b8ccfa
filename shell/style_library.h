// The styles the user can choose: the Standard MIDI Files of the groove
// folders, found afresh at every opening of the dialog. There are two roots:
// the shipped folder "Rhythm Weave" inside the host's Component Files folder,
// and the user's own, listed after it. Each root's subfolders are walked as
// categories, in the order of the directory search; a style's companions
// (its fill, ending, ...) sit in subfolders of its own folder and are no
// categories.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "style_parts.h"

namespace rw::shell {

// Folders below a root that are still walked for styles.
inline constexpr int kDeepestCategory = 4;

// One groove file, as a root and a name relative to it. Everything the
// user sees of it, its companions and the choice the dialog remembers
// derive from these two.
struct GrooveStyle {
  std::u16string root;  // the root folder, ending in a separator
  std::u16string name;  // "Latin\Samba.mid"; "Samba.mid" at the top of the root
  bool own = false;     // in the user's own folder

  // The folders between the root and the file: "Latin" ("" at the top).
  std::u16string Category() const;
  std::u16string FileName() const;
  // The file name less its last four characters (".mid"; a ".midi" keeps
  // its point).
  std::u16string ShownName() const;
  // A part's file relative to the root, as the user knows it:
  // "Latin\Fills\Samba.mid" for the fill of "Latin\Samba.mid".
  std::u16string PartName(PartKind part) const;
  std::u16string PathOf(PartKind part) const { return root + PartName(part); }
  // Whether a companion is there to be read.
  bool Has(PartKind part) const;
  bool operator==(const GrooveStyle&) const = default;
};

using StyleLibrary = std::vector<GrooveStyle>;

// The roots as the host and the user's profile give them, ending in a
// separator; a root that is not there is simply empty.
struct GrooveRoots {
  std::u16string shipped;
  std::u16string own;
};
GrooveRoots FindGrooveRoots();

// Every style of both roots: the top of a root first, then its categories
// depth first, each in the order of the directory search.
StyleLibrary FindStyles(const GrooveRoots& roots);

}  // namespace rw::shell
