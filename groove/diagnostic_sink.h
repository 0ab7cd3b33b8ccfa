// Where the reader's diagnostics go. The plug-in forwards them to the host's
// alert box, rwgroove prints them; the reader itself never talks to a host.
#pragma once

namespace rw::groove {

class DiagnosticSink {
 public:
  virtual ~DiagnosticSink() = default;
  virtual void Show(const char* text) = 0;
};

// The reader's own texts, shown exactly as they stand (misspellings included).
namespace text {
inline constexpr const char* kReadBeyondEof = "Parsing error - trying to read beyond EOF.";
inline constexpr const char* kInvalidHeaderChunkId = "Invalid header chunk ID";
inline constexpr const char* kInvalidHeaderChunkLength = "Invalid header chunk length";
inline constexpr const char* kHeaderTooLong =
    "Header longer than version defined in Midi Specs 1.0 - additinal bytes ignored.";
inline constexpr const char* kInvalidFormatId = "Invalid format ID";
inline constexpr const char* kNoTracks = "No tracks in file";
inline constexpr const char* kFormat2OnlyTrack1 = "Only track 1 will be read from a format 2 file.";
inline constexpr const char* kFormat0OneTrack = "Number of tracks should be 1 for format 0 files";
inline constexpr const char* kUnusualFrameRate = "Unusual number of frames per second";
inline constexpr const char* kInvalidTrackChunkId = "Invalid track chunk ID";
inline constexpr const char* kRunningStatusUndefined = "Running status is used but undefined";
inline constexpr const char* kTimeSignatureChanges =
    "This Midi file contains time signature changes. This is not supported.";
inline constexpr const char* kOffbeatTimeSignature =
    "Invalid offbeat time signature specification found and shifted backwards onto the full "
    "beat 1.";
inline constexpr const char* kEndOfTrackMissing = "End of track meta event missing";
}  // namespace text

}  // namespace rw::groove
