// A host made of plain functions, handed to the binding through its resolver
// seam, so that the binding's own bookkeeping can be watched call by call.
#pragma once

#include <cantel/cantel.h>

#include <map>
#include <string>
#include <vector>

namespace fake_host {

// How often the binding asked for each export.
inline std::map<std::string, int> lookups;
// Exports the fake host pretends not to have.
inline std::vector<std::string> missing;

inline int endEditCalls = 0;
inline int startEditCalls = 0;
inline std::vector<std::uint8_t> savedEntries;  // the entries the host received last

void* Resolve(const char* name);

}  // namespace fake_host
