// The rewrite every frame gets before it is handed back to the host: note
// identifiers made unique within their entry and mirrored into each note's
// flag word, unused note slots cleared, empty entries given one note slot.
#pragma once

namespace rw::host {

// A null frame, or one without an entry array, is left alone.
void NormalizeFrame(void* frame);

}  // namespace rw::host
