// rwgroove's commands as the user reads about them: one table that drives
// the argument check, `rwgroove help` and `rwgroove help COMMAND`.
#pragma once

#include <string>
#include <vector>

namespace rw::tools {

struct CommandHelp {
  const char* name;
  int files;                         // positional arguments after the command
  std::vector<const char*> flags;    // options without a value
  std::vector<const char*> options;  // options that take a value
  const char* usage;
  const char* summary;
  const char* details;
};

const std::vector<CommandHelp>& Commands();
const CommandHelp* FindCommand(const std::string& name);

// The overview of every command and the exit codes.
std::string OverviewHelp();
std::string CommandHelpText(const CommandHelp& command);

}  // namespace rw::tools
