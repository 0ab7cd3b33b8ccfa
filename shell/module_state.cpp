#include "module_state.h"

namespace rw::shell {

ModuleState moduleState;

}  // namespace rw::shell
