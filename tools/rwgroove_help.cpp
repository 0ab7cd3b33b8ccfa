#include "rwgroove_help.h"

namespace rw::tools {

const std::vector<CommandHelp>& Commands() {
  static const std::vector<CommandHelp> commands = {
      {"inspect",
       1,
       {"--json", "--as-played"},
       {},
       "rwgroove inspect FILE [--json] [--as-played]",
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
       "It also tells whether the groove was played by hand (fewer than 80 % of its\n"
       "strokes within 1/64 of a quarter of the thirty-second or sixteenth-triplet\n"
       "grid) or programmed, and for a played one the grid each beat is written\n"
       "straight to (sixteenths or eighth triplets), as the plug-in places it when\n"
       "\"Straighten played timing\" is checked; every key outside the drum map 35 to\n"
       "81 and what becomes of it; and the first measures as a drum grid.\n"
       "\n"
       "options:\n"
       "  --json        the same report as JSON\n"
       "  --as-played   judge a played groove as placed with \"Straighten played\n"
       "                timing\" cleared\n"
       "\n"
       "exit status:\n"
       "  0  the plug-in places the file\n"
       "  1  the plug-in refuses it\n"
       "  2  a usage error, or FILE cannot be read\n"},
      {"filter",
       2,
       {"--json", "--as-played"},
       {},
       "rwgroove filter IN OUT [--json] [--as-played]",
       "write the drums-only file the plug-in would place",
       "Writes OUT with the bytes the plug-in's reader leaves of IN: the first\n"
       "track and the drum track, every other channel silenced. This is the file\n"
       "the plug-in hands to Cantel's MIDI import: mended where the plug-in mends\n"
       "it, and a played groove written straight. Prints the report of 'inspect'.\n"
       "\n"
       "options:\n"
       "  --json        print the report as JSON\n"
       "  --as-played   leave a played groove's timing as it was played\n"
       "\n"
       "exit status:\n"
       "  0  the plug-in places IN; OUT was written\n"
       "  1  the plug-in refuses IN; nothing was written\n"
       "  2  a usage error, or a file that cannot be read or written\n"},
      {"fix",
       2,
       {"--straighten"},
       {"--drums-channel", "--meter"},
       "rwgroove fix IN OUT [--drums-channel N] [--meter N/D] [--straighten]",
       "write a copy the plug-in places: drums moved to channel 10, a meter added",
       "Writes OUT, a copy of IN with the mends the plug-in needs and nothing else:\n"
       "  - the notes of one channel moved to channel 10, the drum channel: channel\n"
       "    N, or, when channel 10 has no notes, the channel whose notes look like a\n"
       "    drum part (a melodic part is never moved unless N names it);\n"
       "  - a time signature at tick 0 of the first track when it has none (the\n"
       "    file's own meter, N/D, or 4/4), and of the drum track when that is a\n"
       "    separate track without one and the meter is not 4/4;\n"
       "  - a RIFF-wrapped MIDI file (.rmi) unwrapped to its Standard MIDI File;\n"
       "  - the damage whose repair is certain, as the plug-in repairs it: an End of\n"
       "    Track added, bytes after it or after the counted tracks left out;\n"
       "  - with --straighten, a played groove written straight to sixteenths and\n"
       "    eighth triplets, keys 22 and 26 as 42 and 46.\n"
       "OUT is written only when the plug-in places it; otherwise fix says why.\n"
       "It does not mend other damage or meter changes.\n"
       "\n"
       "options:\n"
       "  --drums-channel N   move the notes of channel N (1 to 16)\n"
       "  --meter N/D         the time signature to add, such as 3/4 or 6/8\n"
       "  --straighten        write a played groove straight\n"
       "\n"
       "exit status:\n"
       "  0  OUT was written, and the plug-in places it\n"
       "  1  fix cannot mend IN; nothing was written\n"
       "  2  a usage error, or a file that cannot be read or written\n"},
      {"render",
       1,
       {"--as-played"},
       {"-o"},
       "rwgroove render FILE -o OUT.svg [--as-played]",
       "draw the groove as a drum grid (SVG)",
       "Draws the drums the plug-in would place as a grid: one row per\n"
       "instrument with its General MIDI name, beats and measures ruled, each\n"
       "note at its exact tick (triplets and swing show as they are), its\n"
       "velocity as shading, the meter and length in the title. Measures after\n"
       "the groove's length (a stroke that rings into the next repetition) are\n"
       "shaded. A played groove is drawn written straight, with the strokes where\n"
       "they were played faint beside them.\n"
       "\n"
       "options:\n"
       "  -o OUT.svg     the picture to write (required)\n"
       "  --as-played    draw a played groove as it was played\n"
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
