/* English texts of the plug-in: its string table and dialog 102. The one
 * source for both the Windows resource script and the POSIX string table.
 * Strings 15, 16 and 27 are never shown. */
#define RW_LANG_STRINGS(S)                                                                        \
  S(1, "Rhythm Weave")                                                                            \
  S(2, "Rhythm Weave...")                                                                         \
  S(3, "Rhythm Weave")                                                                            \
  S(4, "Rhythm Weave")                                                                            \
  S(10, "Notation with Percussion Map")                                                           \
  S(11, "Normal Notation")                                                                        \
  S(12, "Slash Notation")                                                                         \
  S(13, "No region is selected. Would you like to add a rhythm weave to the complete file?")      \
  S(14, "There are notes in the selected staff. Would you like to proceed and replace these "     \
        "notes with the new rhythm weave?")                                                       \
  S(15, "Rhythm Weave Plug-In")                                                                   \
  S(16, "Rhythm Weave Slash Notation")                                                            \
  S(17, "The selected measure range contains composite time signatures. This is not supported.")  \
  S(18, "The selected measure range contains time signature changes. This is not supported.")     \
  S(19, "Error opening this file.")                                                               \
  S(20, "No drum notes found in this Midi file.")                                                 \
  S(21, "Error: the time signature from the Midi file doesn't match.")                            \
  S(22, "No Midi files found in the Rhythm Weave folders, or neither folder exists. One should "  \
        "be named Rhythm Weave and be located inside the Component Files folder; your own "       \
        "grooves go in a folder named Rhythm Weave in your Documents folder.")                    \
  S(23, "Please select a rhythm weave style from the selection list.")                            \
  S(24, "This document does not contain a percussion map. Please open the library 'Percussion "   \
        "Maps' first, or select a different notation style.")                                     \
  S(25, "This plug-in affects complete measures, even if you make a partial measure selection. "  \
        "Would you like to continue anyway?")                                                     \
  S(26, "The definition for the drum set clef seems to be incorrect.\n\nIt's the fourth clef in " \
        "the second row in Cantel's Clef Designer.\n\nWould you like the Rhythm Weave plug-in to " \
        "fix the clef definition?")                                                               \
  S(27, "Drum set clef")                                                                          \
  S(28, "The definition for the drum set clef seems to be incorrect.\n\nWould you like the "      \
        "Rhythm Weave plug-in to fix the clef definition?")                                       \
  S(29, "The drums of this Midi file begin after the selected measures, so nothing would be "     \
        "placed. Select more measures, or choose a groove whose drums start at its beginning.")   \
  S(30, "Rhythm Weave could not write its temporary file in this folder:\n\n%s\n\nNothing was "   \
        "changed. Check that the folder exists and that you may write to it.")                    \
  S(31, "The fill of this style cannot be used: %s")                                              \
  S(32, "The ending of this style cannot be used: %s")                                            \
  S(33, "No fills")                                                                               \
  S(34, "2 measures")                                                                             \
  S(35, "4 measures")                                                                             \
  S(36, "8 measures")                                                                             \
  S(37, "16 measures")                                                                            \
  S(38, "Drums")                                                                                  \
  S(39, "Dr.")                                                                                    \
  S(40, "Meter %1, %2 measures long: %3")                                                         \
  S(41, "Meter %1, 1 measure long: %3")                                                           \
  S(42, "fits these %1 measures")                                                                 \
  S(43, "does not fit these %1 measures")                                                         \
  S(44, "its drums begin after these measures")                                                   \
  S(45, "Instruments: %1")                                                                        \
  S(46, "This file cannot be read: %1")                                                           \
  S(47, "The file is damaged: %1.")                                                               \
  S(48, "The count-in of this style cannot be used: %s")                                          \
  S(49, "The second groove of this style cannot be used: %s")                                     \
  S(50, "Played timing: %1 % of the strokes on the beat; written straight to sixteenths and "     \
        "triplets")                                                                               \
  S(51, "Played timing: %1 % of the strokes on the beat; placed as played")                       \
  S(52, "its %1 (%2) does not fit these %3 measures")                                             \
  S(53, "second groove")                                                                          \
  S(54, "count-in")                                                                               \
  S(55, "fill")                                                                                   \
  S(56, "ending")                                                                                 \
  S(57, "The drums of this Midi file begin after the measures it gets between the fills, so "     \
        "nothing of it would be heard. Choose fills less often, or none, or choose a groove "     \
        "whose drums start at its beginning.")                                                    \
  S(58, "The drums of this Midi file begin after the measures the count-in and the ending "       \
        "leave it, so nothing of it would be heard. Select more measures, leave out the "         \
        "count-in or the ending, or choose a groove whose drums start at its beginning.")         \
  S(59, "No style fits these %1 measures: clear the box above to see them all.")                  \
  S(60, "its %1 (%2) cannot be used")                                                             \
  S(61, "Your own grooves")

#define RW_DLG_CAPTION "Rhythm Weave"
#define RW_DLG_STYLE " &Style "
#define RW_DLG_PLACE " &Place Music Into: "
#define RW_DLG_NEW_STAFF "&New Staff at Bottom of Score"
#define RW_DLG_EXISTING_STAFF "&Existing Staff:"
#define RW_DLG_GENERATE "&Generate:"
#define RW_DLG_OK "&OK"
#define RW_DLG_CANCEL "&Cancel"
#define RW_DLG_NOTE                                                                         \
  "Note: Additional styles can be made available by placing standard MIDI (.mid) files "    \
  "into the Rhythm Weave folder, located in the Component Files folder, or into a folder "  \
  "Rhythm Weave of your own in your Documents folder."
#define RW_DLG_FILL_EVERY "F&ill every:"
#define RW_DLG_ENDING "End with the en&ding"
#define RW_DLG_ONLY_FITTING "Only styles that fi&t these measures"
#define RW_DLG_ARRANGEMENT " &Arrangement "
#define RW_DLG_COUNT_IN "Begin with the co&unt-in"
#define RW_DLG_CRASH "C&rash after each fill"
#define RW_DLG_VARIATION "Alternate with the second groo&ve"
#define RW_DLG_STRAIGHTEN "Straighten played ti&ming"
