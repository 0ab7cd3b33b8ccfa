#include "rwgroove_help.h"

namespace rw::tools {

const std::vector<CommandHelp>& Commands() {
  static const std::vector<CommandHelp> commands = {
      {"inspect",
       1,
       {"--json"},
       {},
       "rwgroove inspect FILE [--json]",
       "report the file as the plug-in reads it, and its verdict",
       "Reads FILE as the plug-in does: whole, through the plug-in's own reader,\n"
       "which keeps the first track and the first track with drum events (MIDI\n"
       "channel 10) and silences every other channel. Reports the format, the\n"
       "division, the meter, the tempo, the groove's length in measures, its drum\n"
       "keys with their General MIDI names, and then the verdict:\n"
       "  PLACED: the meter, the length, the instruments and the measure meters the\n"
       "          groove fits (by the plug-in's meter rule);\n"
       "  REFUSED: the exact messages the user would see, and one line of advice.\n"
       "The verdict is reached for the best selection a user can make: measures of\n"
       "a meter the groove fits, as many as the groove is long.\n"
       "\n"
       "options:\n"
       "  --json   the same report as JSON\n"
       "\n"
       "exit status:\n"
       "  0  the plug-in places the file\n"
       "  1  the plug-in refuses it\n"
       "  2  a usage error, or FILE cannot be read\n"},
      {"filter",
       2,
       {"--json"},
       {},
       "rwgroove filter IN OUT [--json]",
       "write the drums-only file the plug-in would place",
       "Writes OUT with the bytes the plug-in's reader leaves of IN: the first\n"
       "track and the drum track, every other channel silenced. This is the file\n"
       "the plug-in hands to Cantel's MIDI import. Prints the report of 'inspect'.\n"
       "\n"
       "options:\n"
       "  --json   print the report as JSON\n"
       "\n"
       "exit status:\n"
       "  0  the plug-in places IN; OUT was written\n"
       "  1  the plug-in refuses IN; nothing was written\n"
       "  2  a usage error, or a file that cannot be read or written\n"},
      {"fix",
       2,
       {},
       {"--drums-channel", "--meter"},
       "rwgroove fix IN OUT [--drums-channel N] [--meter N/D]",
       "write a copy the plug-in places: drums moved to channel 10, a meter added",
       "Writes OUT, a copy of IN with the mends the plug-in needs and nothing else:\n"
       "  - the notes of one channel moved to channel 10, the drum channel: channel\n"
       "    N, or, when channel 10 has no notes, the channel with the most notes on\n"
       "    the drum keys 35 to 81;\n"
       "  - a time signature at tick 0 of the first track when it has none (the\n"
       "    file's own meter, N/D, or 4/4), and of the drum track when that is a\n"
       "    separate track without one and the meter is not 4/4;\n"
       "  - a RIFF-wrapped MIDI file (.rmi) unwrapped to its Standard MIDI File.\n"
       "OUT is written only when the plug-in places it; otherwise fix says why.\n"
       "It does not mend damaged files or meter changes.\n"
       "\n"
       "options:\n"
       "  --drums-channel N   move the notes of channel N (1 to 16)\n"
       "  --meter N/D         the time signature to add, such as 3/4 or 6/8\n"
       "\n"
       "exit status:\n"
       "  0  OUT was written, and the plug-in places it\n"
       "  1  fix cannot mend IN; nothing was written\n"
       "  2  a usage error, or a file that cannot be read or written\n"},
      {"render",
       1,
       {},
       {"-o"},
       "rwgroove render FILE -o OUT.svg",
       "draw the groove as a drum grid (SVG)",
       "Draws the drums the plug-in would place as a grid: one row per\n"
       "instrument with its General MIDI name, beats and measures ruled, each\n"
       "note at its exact tick (triplets and swing show as they are), its\n"
       "velocity as shading, the meter and length in the title. Measures after\n"
       "the groove's length (a stroke that rings into the next repetition) are\n"
       "shaded.\n"
       "\n"
       "options:\n"
       "  -o OUT.svg   the picture to write (required)\n"
       "\n"
       "exit status:\n"
       "  0  OUT.svg was written\n"
       "  1  the file has no drums the plug-in could place; nothing was written\n"
       "  2  a usage error, or a file that cannot be read or written\n"},
      {"help",
       -1,
       {},
       {},
       "rwgroove help [COMMAND]",
       "this text, or one command's in full",
       "Prints the overview, or the full description of COMMAND.\n"
       "\n"
       "exit status:\n"
       "  0  always, for a known command\n"
       "  2  an unknown command\n"},
  };
  return commands;
}

const CommandHelp* FindCommand(const std::string& name) {
  for (const CommandHelp& command : Commands()) {
    if (name == command.name) return &command;
  }
  return nullptr;
}

std::string OverviewHelp() {
  std::string text =
      "rwgroove: checks groove files (Standard MIDI Files) for the Rhythm Weave\n"
      "plug-in with the plug-in's own reader, and tells whether the plug-in would\n"
      "place them, in the plug-in's own words.\n"
      "\nusage:\n";
  for (const CommandHelp& command : Commands()) text += std::string("  ") + command.usage + "\n";
  text += "\ncommands:\n";
  for (const CommandHelp& command : Commands()) {
    std::string name = command.name;
    name.resize(9, ' ');
    text += "  " + name + command.summary + "\n";
  }
  text +=
      "\nexit status:\n"
      "  0  the plug-in places the file (and the command did its work)\n"
      "  1  the plug-in refuses the file, or fix cannot mend it; nothing was written\n"
      "  2  a usage error, or a file that cannot be read or written\n"
      "\nRun 'rwgroove help COMMAND' for a command's options.\n";
  return text;
}

std::string CommandHelpText(const CommandHelp& command) {
  return std::string("usage: ") + command.usage + "\n\n" + command.details;
}

}  // namespace rw::tools
