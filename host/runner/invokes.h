// The runs of the command that a scenario makes in one loaded module: the
// single-run form (top-level "selection", "dialog", "answers") or "invokes".
#ifndef CANTEL_HOST_INVOKES_H
#define CANTEL_HOST_INVOKES_H

#include <optional>
#include <string>
#include <vector>

#include "scenario.h"

namespace cantel_host {

struct Invoke {
  std::optional<ERegion> selection;
  std::vector<cantel_engine::DialogAction> dialog;
  std::vector<std::uint16_t> answers;
  json add_groove_files = json::array();
  std::vector<std::string> remove_groove_files;
  json add_user_groove_files = json::array();
  std::vector<std::string> remove_user_groove_files;
  std::optional<json> setting;
};

// True for a scenario with "invokes"; its result lists the runs under the
// same name.
bool has_invokes(const Scenario& scenario);
std::vector<Invoke> invokes_of(const Scenario& scenario);

// Before the run: its grooves and setting in place, its user scripted, its
// selection made the host's.
void prepare_invoke(const Invoke& invoke, const RunFolders& folders,
                    cantel_engine::Document& document);

// What one run did: result of invoke aside, everything the engine logged.
json invoke_json(cantel_engine::Document& document);

}  // namespace cantel_host

#endif
