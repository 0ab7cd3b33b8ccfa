// Every operating-system service the plug-in uses, behind one header. The
// Windows build calls the system; the POSIX build maps each service as the
// project's design notes describe (module look-up with dlopen, registry as a
// folder, the string table compiled in, directory search with filesystem,
// the user's folder from the XDG variables, no fonts: the host draws).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace rw::platform {

using ModuleHandle = void*;

// --- Modules -------------------------------------------------------------

// File names of every program that hosts the plug-in interface, main
// edition first. Looked up among the modules already loaded, never loaded.
inline constexpr std::size_t kHostModuleCount = 13;
extern const char* const kHostModuleNames[kHostModuleCount];

// Handle of an already loaded module with this file name, or null.
ModuleHandle GetLoadedModule(const char* fileName);
// The first loaded module of kHostModuleNames, found once per process and
// kept (null for good when none was loaded at the first call).
ModuleHandle HostModule();
// Address of an exported function, or null.
void* GetExport(ModuleHandle module, const char* name);
// The plug-in's own module (for its resources), or null.
ModuleHandle OwnModule();
// The module that exports the list-box and combo-box messages to the
// dialog's controls: the system's on Windows; on POSIX the host owns the
// controls and exports them beside its CX_ functions.
ModuleHandle DialogControlModule();

// --- String resources of the plug-in's own module --------------------------

// As the system's LoadString with a buffer: copies at most capacity - 1
// units of string `id` in the current language, always terminates, returns
// the units copied (0 when there is no such string). capacity must be > 0.
int LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer, int capacity);
// The 8-bit twin: the system code page on Windows, UTF-8 on POSIX.
int LoadStringA(ModuleHandle module, std::uint32_t id, char* buffer, int capacity);

// --- Per-user settings (the registry on Windows) ----------------------------

using RegistryKey = void*;
inline constexpr long kRegistryOk = 0;
inline constexpr std::uint32_t kKeyAllAccess = 0xF003F;
inline constexpr std::uint32_t kRegDword = 4;

// Opens an existing key under the current user's hive; never creates one.
long RegOpenKeyExA(const char* subKey, std::uint32_t options, std::uint32_t access,
                   RegistryKey* key);
// Reads at most *size bytes of the value; *size receives its length. A value
// longer than *size fails and writes nothing.
long RegQueryValueExA(RegistryKey key, const char* name, std::uint32_t* type, std::uint8_t* data,
                      std::uint32_t* size);
long RegSetValueExA(RegistryKey key, const char* name, std::uint32_t type, const std::uint8_t* data,
                    std::uint32_t size);
long RegCloseKey(RegistryKey key);

// --- Files -------------------------------------------------------------------

inline constexpr std::size_t kMaxPath = 260;

inline constexpr std::uint32_t kAttributeDirectory = 0x10;

struct FindData {
  std::uint32_t attributes = 0;  // kAttributeDirectory for a folder
  char16_t fileName[kMaxPath] = {};
};
using FindHandle = void*;
inline FindHandle const kInvalidFindHandle = reinterpret_cast<FindHandle>(~std::uintptr_t{0});

// Directory search with the system's wildcard rules ("*.mid" also matches a
// long name ending in ".midi"); folders match too. Names come in the
// system's order: NTFS order on Windows, case-insensitive order of the
// upper-cased UTF-16 units on POSIX, where a name that is not valid UTF-8
// has no UTF-16 form and is not found.
FindHandle FindFirstFileW(const char16_t* pattern, FindData* found);
bool FindNextFileW(FindHandle search, FindData* found);
// Ends a search that FindFirstFileW opened, whether or not it ran to its
// end; false for a handle that is no open search. Every search is closed:
// the style library walks folders of folders each time the dialog opens.
bool FindClose(FindHandle search);
#if !defined(_WIN32)
// How many searches are open now. The POSIX search holds its folder's list
// until it is closed, so a search left open shows here (for tests).
std::size_t OpenSearches();
#endif

bool DeleteFileW(const char16_t* path);
// The C runtime's wide-character open; use the standard stdio calls after it.
std::FILE* OpenFileW(const char16_t* path, const char* mode);
// Flushes an open file and cuts it to `size` bytes.
bool TruncateFile(std::FILE* file, std::uint64_t size);
// The first bytes of a file, at most `capacity`, with the file's whole size,
// in as few calls to the system as there can be: the style list reads the
// start of every groove of a library. -1 when the file does not open or
// cannot be read.
std::int64_t ReadFilePrefix(const char16_t* path, std::uint8_t* buffer, std::size_t capacity,
                            std::uint64_t* fileSize);

// --- The user's own groove folder ------------------------------------------

inline constexpr char16_t kUserGrooveFolderName[] = u"Rhythm Weave";

// The path of the folder the user keeps grooves of their own in, whether or
// not it exists, zero-terminated and without a separator at its end:
// kUserGrooveFolderName in the Documents folder the user's profile names
// (wherever the user has moved it) on Windows, in $XDG_DATA_HOME (or
// $HOME/.local/share when that is unset, empty or relative) on POSIX. False,
// with the buffer empty when there is one, when there is no such folder to
// name or the path with its terminator does not fit in `capacity` units.
// The folder is the user's to make: nothing is ever created here.
bool UserGrooveFolder(char16_t* buffer, std::size_t capacity);

// --- Fonts -----------------------------------------------------------------

using FontHandle = void*;

// A new fixed-width font as tall as the dialog's own, in its character set,
// for a control that lines text up in columns (the caller sets it with
// WM_SETFONT and deletes it when the dialog goes). Null when none could be
// made, and always on POSIX, where the host draws the controls.
FontHandle CreateFixedWidthFont(void* dialog);
// Deletes a font CreateFixedWidthFont made; null is ignored.
void DeleteFont(FontHandle font);

}  // namespace rw::platform
