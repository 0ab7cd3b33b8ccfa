/* Swedish texts of the plug-in (see en.h). */
#define RW_LANG_STRINGS(S)                                                                        \
  S(1, "Rhythm Weave")                                                                            \
  S(2, "Rhythm Weave...")                                                                         \
  S(3, "Rhythm Weave")                                                                            \
  S(4, "Rhythm Weave")                                                                            \
  S(10, "Notation med slagverkskarta")                                                            \
  S(11, "Vanlig notation")                                                                        \
  S(12, "Snedstrecksnotation")                                                                    \
  S(13, "Inget område är markerat. Vill du lägga till en rytm i hela filen?")                     \
  S(14, "Det finns noter i den valda notraden. Vill du fortsätta och ersätta dem med den nya "    \
        "rytmen?")                                                                                \
  S(15, "Insticksprogrammet Rhythm Weave")                                                        \
  S(16, "Rhythm Weave snedstrecksnotation")                                                       \
  S(17, "Det valda taktområdet innehåller sammansatta taktarter. Det stöds inte.")                \
  S(18, "Det valda taktområdet innehåller taktartsbyten. Det stöds inte.")                        \
  S(19, "Det gick inte att öppna filen.")                                                         \
  S(20, "Inga trumnoter hittades i MIDI-filen.")                                                  \
  S(21, "Fel: taktarten i MIDI-filen stämmer inte.")                                              \
  S(22, "Inga MIDI-filer hittades i mapparna Rhythm Weave, eller så finns ingen av dem. Den "     \
        "ena ska heta Rhythm Weave och ligga i mappen Component Files; dina egna komp kan "       \
        "ligga i mappen Rhythm Weave i mappen Dokument.")                                         \
  S(23, "Välj en rytmstil i listan.")                                                             \
  S(24, "Dokumentet innehåller ingen slagverkskarta. Öppna först biblioteket 'Percussion Maps' "  \
        "eller välj en annan notationsstil.")                                                     \
  S(25, "Insticksprogrammet påverkar hela takter, även om du bara markerar en del av en takt. "   \
        "Vill du fortsätta ändå?")                                                                \
  S(26, "Definitionen av trumsetsklaven verkar vara felaktig.\n\nDet är den fjärde klaven i "     \
        "andra raden i Cantels klavdesigner.\n\nVill du att insticksprogrammet Rhythm Weave ska " \
        "rätta klavdefinitionen?")                                                                \
  S(27, "Trumsetsklav")                                                                           \
  S(28, "Definitionen av trumsetsklaven verkar vara felaktig.\n\nVill du att "                    \
        "insticksprogrammet Rhythm Weave ska rätta klavdefinitionen?")                            \
  S(29, "Trummorna i MIDI-filen börjar efter de markerade takterna, så ingenting skulle "         \
        "placeras. Markera fler takter eller välj ett komp vars trummor börjar från början.")     \
  S(30, "Rhythm Weave kunde inte skriva sin tillfälliga fil i den här mappen:\n\n%s\n\n"          \
        "Ingenting har ändrats. Kontrollera att mappen finns och att du får skriva i den.")       \
  S(31, "Stilens break kan inte användas: %s")                                                    \
  S(32, "Stilens avslutning kan inte användas: %s")                                               \
  S(33, "Inga break")                                                                             \
  S(34, "2:a takt")                                                                               \
  S(35, "4:e takt")                                                                               \
  S(36, "8:e takt")                                                                               \
  S(37, "16:e takt")                                                                              \
  S(38, "Trummor")                                                                                \
  S(39, "Tr.")                                                                                    \
  S(40, "Taktart %1, längd %2 takter: %3")                                                        \
  S(41, "Taktart %1, längd 1 takt: %3")                                                           \
  S(42, "passar de markerade %1-takterna")                                                        \
  S(43, "passar inte de markerade %1-takterna")                                                   \
  S(44, "trummorna börjar efter de markerade takterna")                                           \
  S(45, "Instrument: %1")                                                                         \
  S(46, "Filen kan inte läsas: %1")                                                               \
  S(47, "Filen är skadad: %1.")                                                                   \
  S(48, "Stilens inräkning kan inte användas: %s")                                                \
  S(49, "Stilens andra komp kan inte användas: %s")                                               \
  S(50, "Spelad timing: %1 % av slagen på rutnätet; skrivs jämnt i sextondelar och trioler")      \
  S(51, "Spelad timing: %1 % av slagen på rutnätet; placeras som det spelades")                   \
  S(52, "dess %1 (%2) passar inte de markerade %3-takterna")                                      \
  S(53, "andra komp")                                                                             \
  S(54, "inräkning")                                                                              \
  S(55, "break")                                                                                  \
  S(56, "avslutning")                                                                             \
  S(57, "Trummorna i MIDI-filen börjar efter de takter den får mellan breaken, så ingenting av "  \
        "den skulle höras. Välj break mer sällan eller inga, eller välj ett komp vars trummor "   \
        "börjar från början.")                                                                    \
  S(58, "Trummorna i MIDI-filen börjar efter de takter som inräkningen och avslutningen lämnar "  \
        "åt den, så ingenting av den skulle höras. Markera fler takter, hoppa över inräkningen "  \
        "eller avslutningen, eller välj ett komp vars trummor börjar från början.")               \
  S(59, "Ingen stil passar de markerade %1-takterna: avmarkera rutan ovan för att se alla.")      \
  S(60, "dess %1 (%2) kan inte användas")                                                         \
  S(61, "Egna komp")

#define RW_DLG_CAPTION "Rhythm Weave"
#define RW_DLG_STYLE " &Stil "
#define RW_DLG_PLACE " &Placera musiken i: "
#define RW_DLG_NEW_STAFF "&Ny notrad längst ner i partituret"
#define RW_DLG_EXISTING_STAFF "&Befintlig notrad:"
#define RW_DLG_GENERATE "&Generera:"
#define RW_DLG_OK "&OK"
#define RW_DLG_CANCEL "&Avbryt"
#define RW_DLG_NOTE                                                                        \
  "Obs! Fler stilar blir tillgängliga om du lägger standard-MIDI-filer (.mid) i mappen "   \
  "Rhythm Weave, som ligger i mappen Component Files, eller i en egen mapp Rhythm Weave "  \
  "i mappen Dokument."
#define RW_DLG_FILL_EVERY "Br&eak var:"
#define RW_DLG_ENDING "Avsluta &med avslutningen"
#define RW_DLG_ONLY_FITTING "Bara stilar som passar &takterna"
#define RW_DLG_ARRANGEMENT " A&rrangemang "
#define RW_DLG_COUNT_IN "Börja med &inräkning"
#define RW_DLG_CRASH "&Crash efter varje break"
#define RW_DLG_VARIATION "&Växla med det andra kompet"
#define RW_DLG_STRAIGHTEN "&Jämna ut spelad timing"
