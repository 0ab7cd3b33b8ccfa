// The reader over the fast store, compiled once for every user.
#include "smf_header_impl.h"
#include "track_parser_impl.h"

namespace rw::groove {

template class BasicSmfReader<GapBuffer>;

}  // namespace rw::groove
