// The groove file's bytes for one run, opened as the platform opens a wide
// path, and written back as the temporary file that the host's MIDI import
// reads.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "groove_buffer.h"

namespace rw::shell {

using groove::GrooveBuffer;

// Nothing when the file does not open, is empty or too large, cannot be
// read whole, or no memory is left for it.
std::optional<GrooveBuffer> ReadGrooveFile(const std::u16string& path);

// The file the host's import reads, in its temporary folder. Never offered
// as a style, although it may sit in the groove folder too.
inline constexpr char16_t kTemporaryFileName[] = u"RhythmWeave$$Temp$$File.mid";

// The temporary file of one run. Once written it is removed when the object
// goes, on every way out of the run.
class TemporaryGrooveFile {
 public:
  TemporaryGrooveFile() = default;
  TemporaryGrooveFile(const TemporaryGrooveFile&) = delete;
  TemporaryGrooveFile& operator=(const TemporaryGrooveFile&) = delete;
  ~TemporaryGrooveFile() { Delete(); }

  // False when the host gave no usable folder, or the file could not be
  // written whole and read back the same (what was written is removed at
  // once).
  bool Write(const GrooveBuffer& groove);
  // Writes another groove over one written before, without reading it back.
  bool Rewrite(const GrooveBuffer& groove);
  void Delete();
  // The zero-terminated path, as the import block carries it.
  const std::u16string& Path() const { return path_; }
  // The host's temporary folder, as it answered.
  const std::u16string& Folder() const { return folder_; }

 private:
  bool WriteWhole(const GrooveBuffer& groove);
  bool ReadsBack(const GrooveBuffer& groove) const;

  std::u16string folder_;
  std::u16string path_;
  bool written_ = false;
};

}  // namespace rw::shell
