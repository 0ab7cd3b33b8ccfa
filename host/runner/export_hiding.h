// A host that lacks single exports: the loaded engine's export names are
// misspelt in memory, before the plug-in loads, so that the plug-in's own
// look-up by name (dlsym, GetProcAddress) really finds nothing.
#ifndef CANTEL_HOST_EXPORT_HIDING_H
#define CANTEL_HOST_EXPORT_HIDING_H

#include <string>
#include <vector>

#include "module_loader.h"

namespace cantel_host {

// Every name must be a host function of the interface. Throws when a name
// cannot be hidden, or when hiding it would cost another export.
void hide_exports(const Module& engine, const std::vector<std::string>& names);

// A spelling of `name` no longer than it that differs from it and sorts
// strictly between `before` and `after` (null: no bound), so that a binary
// search over a sorted name table still finds every other name; empty when
// there is none.
std::string hidden_spelling(const std::string& name, const char* before, const char* after);

}  // namespace cantel_host

#endif
