/* Polish texts of the plug-in (see en.h). */
#define RW_LANG_STRINGS(S)                                                                        \
  S(1, "Rhythm Weave")                                                                            \
  S(2, "Rhythm Weave...")                                                                         \
  S(3, "Rhythm Weave")                                                                            \
  S(4, "Rhythm Weave")                                                                            \
  S(10, "Notacja z mapą perkusji")                                                                \
  S(11, "Notacja zwykła")                                                                         \
  S(12, "Notacja ukośnikowa")                                                                     \
  S(13, "Nie zaznaczono żadnego obszaru. Czy dodać rytm do całego pliku?")                        \
  S(14, "Na wybranej pięciolinii są nuty. Czy kontynuować i zastąpić te nuty nowym rytmem?")      \
  S(15, "Wtyczka Rhythm Weave")                                                                   \
  S(16, "Rhythm Weave – notacja ukośnikowa")                                                      \
  S(17, "Wybrany zakres taktów zawiera złożone oznaczenia metrum. Nie jest to obsługiwane.")      \
  S(18, "Wybrany zakres taktów zawiera zmiany metrum. Nie jest to obsługiwane.")                  \
  S(19, "Błąd podczas otwierania tego pliku.")                                                    \
  S(20, "W tym pliku MIDI nie znaleziono nut perkusji.")                                          \
  S(21, "Błąd: metrum pliku MIDI nie pasuje.")                                                    \
  S(22, "Nie znaleziono plików MIDI w folderach Rhythm Weave albo żaden z nich nie istnieje. "    \
        "Folder powinien nazywać się Rhythm Weave i znajdować się w folderze Component Files; "   \
        "własne rytmy można umieścić w folderze Rhythm Weave w folderze Dokumenty.")              \
  S(23, "Wybierz styl rytmu z listy.")                                                            \
  S(24, "Ten dokument nie zawiera mapy perkusji. Najpierw otwórz bibliotekę 'Percussion Maps' "   \
        "albo wybierz inny styl notacji.")                                                        \
  S(25, "Ta wtyczka działa na całych taktach, nawet jeśli zaznaczysz tylko część taktu. "         \
        "Czy mimo to kontynuować?")                                                               \
  S(26, "Definicja klucza perkusyjnego wydaje się nieprawidłowa.\n\nTo czwarty klucz w drugim "   \
        "rzędzie w projektancie kluczy programu Cantel.\n\nCzy wtyczka Rhythm Weave ma poprawić " \
        "definicję klucza?")                                                                      \
  S(27, "Klucz perkusyjny")                                                                       \
  S(28, "Definicja klucza perkusyjnego wydaje się nieprawidłowa.\n\nCzy wtyczka Rhythm Weave "    \
        "ma poprawić definicję klucza?")                                                          \
  S(29, "Perkusja w tym pliku MIDI zaczyna się po wybranych taktach, więc nic nie "               \
        "zostałoby wstawione. Zaznacz więcej taktów albo wybierz rytm, którego perkusja "         \
        "zaczyna się od początku.")                                                               \
  S(30, "Rhythm Weave nie mógł zapisać pliku tymczasowego w tym folderze:\n\n%s\n\n"              \
        "Nic nie zostało zmienione. Sprawdź, czy folder istnieje i czy masz prawo do zapisu w nim.") \
  S(31, "Nie można użyć przejścia tego stylu: %s")                                                \
  S(32, "Nie można użyć zakończenia tego stylu: %s")                                              \
  S(33, "Bez przejść")                                                                            \
  S(34, "2 takty")                                                                                \
  S(35, "4 takty")                                                                                \
  S(36, "8 taktów")                                                                               \
  S(37, "16 taktów")                                                                              \
  S(38, "Perkusja")                                                                               \
  S(39, "Perk.")                                                                                  \
  S(40, "Metrum %1, długość w taktach: %2 – %3")                                                  \
  S(41, "Metrum %1, długość: 1 takt – %3")                                                        \
  S(42, "pasuje do zaznaczonych taktów %1")                                                       \
  S(43, "nie pasuje do zaznaczonych taktów %1")                                                   \
  S(44, "perkusja zaczyna się po zaznaczonych taktach")                                           \
  S(45, "Instrumenty: %1")                                                                        \
  S(46, "Nie można odczytać tego pliku: %1")                                                      \
  S(47, "Plik jest uszkodzony: %1.")                                                              \
  S(48, "Nie można użyć odliczania tego stylu: %s")                                               \
  S(49, "Nie można użyć drugiego rytmu tego stylu: %s")                                           \
  S(50, "Zagrany rytm: %1 % uderzeń na siatce; zapisany równo w szesnastkach i triolach")         \
  S(51, "Zagrany rytm: %1 % uderzeń na siatce; wstawiony tak, jak zagrano")                       \
  S(52, "%1 (%2) nie pasuje do zaznaczonych taktów %3")                                           \
  S(53, "drugi rytm")                                                                             \
  S(54, "odliczanie")                                                                             \
  S(55, "przejście")                                                                              \
  S(56, "zakończenie")                                                                            \
  S(57, "Perkusja w tym pliku MIDI zaczyna się po taktach, które dostaje między przejściami, "    \
        "więc nic z niej nie byłoby słychać. Wybierz rzadsze przejścia albo bez przejść, albo "   \
        "wybierz rytm, którego perkusja zaczyna się od początku.")                                \
  S(58, "Perkusja w tym pliku MIDI zaczyna się po taktach, które zostawiają jej odliczanie i "    \
        "zakończenie, więc nic z niej nie byłoby słychać. Zaznacz więcej taktów, pomiń "          \
        "odliczanie lub zakończenie albo wybierz rytm, którego perkusja zaczyna się od "          \
        "początku.")                                                                              \
  S(59, "Żaden styl nie pasuje do zaznaczonych taktów %1: odznacz pole powyżej, aby zobaczyć "    \
        "wszystkie.")                                                                             \
  S(60, "nie można użyć: %1 (%2)")                                                                \
  S(61, "Własne rytmy")

#define RW_DLG_CAPTION "Rhythm Weave"
#define RW_DLG_STYLE " &Styl "
#define RW_DLG_PLACE " &Umieść muzykę w: "
#define RW_DLG_NEW_STAFF "&Nowa pięciolinia na dole partytury"
#define RW_DLG_EXISTING_STAFF "&Istniejąca pięciolinia:"
#define RW_DLG_GENERATE "&Generuj:"
#define RW_DLG_OK "&OK"
#define RW_DLG_CANCEL "&Anuluj"
#define RW_DLG_NOTE                                                                         \
  "Uwaga: dodatkowe style można udostępnić, umieszczając standardowe pliki MIDI (.mid) w "  \
  "folderze Rhythm Weave, który znajduje się w folderze Component Files, albo we własnym "  \
  "folderze Rhythm Weave w folderze Dokumenty."
#define RW_DLG_FILL_EVERY "&Przejście co:"
#define RW_DLG_ENDING "Zakończ zakończ&eniem stylu"
#define RW_DLG_ONLY_FITTING "Tylko style pasujące do &taktów"
#define RW_DLG_ARRANGEMENT " A&ranżacja "
#define RW_DLG_COUNT_IN "Zacznij od o&dliczania"
#define RW_DLG_CRASH "&Crash po każdym przejściu"
#define RW_DLG_VARIATION "Na &zmianę z drugim rytmem"
#define RW_DLG_STRAIGHTEN "&Wyrównaj zagrany rytm"
