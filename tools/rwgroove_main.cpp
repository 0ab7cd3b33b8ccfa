// rwgroove: the plug-in's groove reader and verdict on the command line, for
// groove authors. `rwgroove help` describes the commands and exit codes.
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "groove_examination.h"
#include "groove_fix.h"
#include "groove_picture.h"
#include "groove_report.h"
#include "rwgroove_help.h"

namespace {

using namespace rw::tools;

constexpr int kPlaced = 0;
constexpr int kRefused = 1;
constexpr int kUsageOrIo = 2;

struct Arguments {
  const CommandHelp* command = nullptr;
  std::vector<std::string> files;
  std::map<std::string, std::string> options;  // flags map to ""
  bool has(const char* option) const { return options.count(option) != 0; }
};

int UsageError(const std::string& problem) {
  std::cerr << "rwgroove: " << problem << "\nRun 'rwgroove help' for the commands.\n";
  return kUsageOrIo;
}

bool Contains(const std::vector<const char*>& names, const std::string& name) {
  for (const char* n : names) {
    if (name == n) return true;
  }
  return false;
}

// Fills `args`; an empty optional means the arguments are fine.
std::optional<std::string> Parse(const std::vector<std::string>& raw, Arguments& args) {
  args.command = FindCommand(raw[0]);
  if (!args.command) return "unknown command '" + raw[0] + "'";
  for (std::size_t i = 1; i < raw.size(); ++i) {
    const std::string& arg = raw[i];
    if (arg.size() > 1 && arg[0] == '-') {
      if (Contains(args.command->flags, arg)) {
        args.options[arg] = "";
      } else if (Contains(args.command->options, arg)) {
        if (i + 1 >= raw.size()) return arg + " needs a value";
        args.options[arg] = raw[++i];
      } else {
        return std::string("'") + args.command->name + "' has no option " + arg;
      }
    } else {
      args.files.push_back(arg);
    }
  }
  const int wanted = args.command->files;
  if (wanted >= 0 && args.files.size() != std::size_t(wanted)) {
    return std::string("usage: ") + args.command->usage;
  }
  return std::nullopt;
}

// The file read and inspected, or an exit code when it could not be read.
struct Inspected {
  GrooveBuffer file;
  GrooveInspection inspection;
};
std::optional<Inspected> ReadAndInspect(const std::string& path, bool asPlayed, int& exitCode) {
  Inspected result;
  const ReadOutcome read = ReadGrooveFile(path, result.file);
  if (read == ReadOutcome::kCannotRead) {
    std::cerr << "rwgroove: cannot read " << path << "\n";
    exitCode = kUsageOrIo;
    return std::nullopt;
  }
  result.inspection =
      read == ReadOutcome::kRead ? InspectGroove(result.file, asPlayed) : InspectUnreadFile(read);
  return result;
}

int Report(const std::string& name, const Inspected& inspected, bool json) {
  const GrooveInspection& inspection = inspected.inspection;
  const std::span<const uint8_t> filtered = inspected.file.view();
  std::cout << (json ? JsonReport(inspection, filtered) : TextReport(name, inspection, filtered));
  return inspection.placed() ? kPlaced : kRefused;
}

int Inspect(const Arguments& args) {
  int code = kUsageOrIo;
  const auto inspected = ReadAndInspect(args.files[0], args.has("--as-played"), code);
  if (!inspected) return code;
  return Report(args.files[0], *inspected, args.has("--json"));
}

int Filter(const Arguments& args) {
  int code = kUsageOrIo;
  const auto inspected = ReadAndInspect(args.files[0], args.has("--as-played"), code);
  if (!inspected) return code;
  const GrooveInspection& inspection = inspected->inspection;
  if (inspection.placed() && !WriteWholeFile(args.files[1], inspected->file.view())) {
    std::cerr << "rwgroove: cannot write " << args.files[1] << "\n";
    return kUsageOrIo;
  }
  code = Report(args.files[0], *inspected, args.has("--json"));
  if (!args.has("--json")) {
    std::cout << (inspection.placed() ? "wrote " + args.files[1] + "\n" : "nothing written\n");
  }
  return code;
}

std::optional<int> ParseNumber(const std::string& text, int low, int high) {
  if (text.empty() || text.size() > 3 ||
      text.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  const int value = std::stoi(text);
  if (value < low || value > high) return std::nullopt;
  return value;
}

int Fix(const Arguments& args) {
  FixOptions options;
  if (args.has("--drums-channel")) {
    options.drumsChannel = ParseNumber(args.options.at("--drums-channel"), 1, 16);
    if (!options.drumsChannel) return UsageError("--drums-channel takes a channel from 1 to 16");
  }
  if (args.has("--meter")) {
    const std::string& meter = args.options.at("--meter");
    const std::size_t slash = meter.find('/');
    const auto numerator = ParseNumber(meter.substr(0, slash), 1, 99);
    const int denominator =
        slash == std::string::npos ? 0 : ParseNumber(meter.substr(slash + 1), 1, 64).value_or(0);
    int power = 0;
    while ((1 << power) < denominator) ++power;
    if (!numerator || denominator == 0 || (1 << power) != denominator) {
      return UsageError("--meter takes a time signature such as 3/4 or 6/8");
    }
    options.numerator = numerator;
    options.denominatorPower = power;
  }
  options.straighten = args.has("--straighten");
  GrooveBuffer file;
  const std::string& in = args.files[0];
  const ReadOutcome read = ReadGrooveFile(in, file);
  if (read == ReadOutcome::kCannotRead) {
    std::cerr << "rwgroove: cannot read " << in << "\n";
    return kUsageOrIo;
  }
  if (read != ReadOutcome::kRead) {
    std::cout << in << ": not fixed: "
              << (read == ReadOutcome::kEmpty ? "the file is empty" : "the file is too large")
              << "\n";
    return kRefused;
  }
  const FixResult fixed = FixGroove(file.view(), options);
  if (!fixed.fixed) {
    std::cout << in << ": not fixed: " << fixed.refusal << "\nnothing written\n";
    return kRefused;
  }
  if (!WriteWholeFile(args.files[1], fixed.bytes)) {
    std::cerr << "rwgroove: cannot write " << args.files[1] << "\n";
    return kUsageOrIo;
  }
  std::cout << in << " -> " << args.files[1] << "\n";
  if (fixed.changes.empty()) std::cout << "  nothing needed mending; written unchanged\n";
  for (const std::string& change : fixed.changes) std::cout << "  " << change << "\n";
  std::cout << "  the plug-in places it: see for yourself with rwgroove inspect \"" << args.files[1]
            << "\"\n";
  return kPlaced;
}

int Render(const Arguments& args) {
  if (!args.has("-o")) return UsageError(std::string("usage: ") + args.command->usage);
  int code = kUsageOrIo;
  const auto inspected = ReadAndInspect(args.files[0], args.has("--as-played"), code);
  if (!inspected) return code;
  const GrooveInspection& inspection = inspected->inspection;
  // Drawn once the drums are proven; a groove that fits no measure meter
  // still shows what it holds.
  const bool drawable =
      inspection.placed() || inspection.judgement().verdict == rw::groove::Verdict::kMeterMismatch;
  if (!drawable) {
    std::cout << TextReport(args.files[0], inspection, inspected->file.view()) << "nothing drawn\n";
    return kRefused;
  }
  std::string name = args.files[0];
  name = name.substr(name.find_last_of("/\\") + 1);
  if (name.size() > 4 && (name.ends_with(".mid") || name.ends_with(".MID")))
    name.resize(name.size() - 4);
  const std::string svg = DrumGridSvg(GrooveGrid(name, inspection, inspected->file.view()));
  const std::string& out = args.options.at("-o");
  if (!WriteWholeFile(out, {reinterpret_cast<const uint8_t*>(svg.data()), svg.size()})) {
    std::cerr << "rwgroove: cannot write " << out << "\n";
    return kUsageOrIo;
  }
  std::cout << "wrote " << out << "\n";
  return kPlaced;
}

int Help(const Arguments& args) {
  if (args.files.empty()) {
    std::cout << OverviewHelp();
    return 0;
  }
  const CommandHelp* command = args.files.size() == 1 ? FindCommand(args.files[0]) : nullptr;
  if (!command) return UsageError("no such command: " + args.files[0]);
  std::cout << CommandHelpText(*command);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> raw(argv + 1, argv + argc);
  if (raw.empty()) {
    std::cerr << OverviewHelp();
    return kUsageOrIo;
  }
  if (raw[0] == "--help" || raw[0] == "-h") {
    std::cout << OverviewHelp();
    return 0;
  }
  // `rwgroove COMMAND --help` is `rwgroove help COMMAND`.
  if (raw.size() == 2 && (raw[1] == "--help" || raw[1] == "-h") && FindCommand(raw[0])) {
    std::cout << CommandHelpText(*FindCommand(raw[0]));
    return 0;
  }
  Arguments args;
  if (const auto problem = Parse(raw, args)) return UsageError(*problem);
  const std::string name = args.command->name;
  if (name == "inspect") return Inspect(args);
  if (name == "filter") return Filter(args);
  if (name == "fix") return Fix(args);
  if (name == "render") return Render(args);
  return Help(args);
}
