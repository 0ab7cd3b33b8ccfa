// The styles the user can choose: the Standard MIDI Files of the groove
// folder "Rhythm Weave" inside the host's Component Files folder, in the
// order of the directory search, found afresh at every opening of the
// dialog.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace rw::shell {

// One groove file of the folder, with the fill and the ending that may go
// with it: files of the same name in the subfolders "Fills" and "Endings".
struct GrooveStyle {
  std::u16string folder;    // the groove folder, ending in a separator
  std::u16string fileName;  // as the directory search gave it

  std::u16string Path() const { return folder + fileName; }
  // The file name less its last four characters (".mid"; a ".midi" keeps
  // its point).
  std::u16string ShownName() const;

  // The companions' paths relative to the groove folder, as the user knows
  // them.
  std::u16string FillName() const { return u"Fills\\" + fileName; }
  std::u16string EndingName() const { return u"Endings\\" + fileName; }
  // Whether they are there to be read.
  bool HasFill() const;
  bool HasEnding() const;
};

using StyleLibrary = std::vector<GrooveStyle>;

// Finds the styles and fills the style list (2002) with their shown names
// and, when there is one, the Generate list (1019) with the notation styles,
// selecting `notationRow`. Shows string 22 and answers an empty library
// when the folder holds none.
StyleLibrary FillStyleLibrary(void* dialog, std::int32_t notationRow);

}  // namespace rw::shell
