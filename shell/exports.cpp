// The six functions Cantel finds the plug-in by. Nothing thrown inside may
// cross them, and null pointers from the host are never followed.
#include <cantel/cantel.h>

#include <cstring>
#include <type_traits>

#include "dialog.h"
#include "dialog_ids.h"
#include "host_api.h"
#include "module_state.h"
#include "string_resources.h"
#include "work_region.h"

#if defined(_WIN32)
#define RW_EXPORT
#else
#define RW_EXPORT __attribute__((visibility("default")))
#endif

namespace {

constexpr std::uint32_t kStringMenuName = 1;
constexpr std::uint32_t kStringMenuCommand = 2;
constexpr std::uint32_t kStringMenuText2 = 3;
constexpr std::uint32_t kStringMenuText3 = 4;

void FillMenuRecord(cx_char16* menu) {
  rw::LoadStringResourceA(kStringMenuName, rw::shell::moduleState.menuName,
                          rw::shell::kMenuNameSize);
  rw::LoadStringField(kStringMenuCommand, menu + CX_MENU_COMMAND, CX_MENU_TEXT_UNITS);
  rw::LoadStringField(kStringMenuText2, menu + CX_MENU_TEXT2, CX_MENU_TEXT_UNITS);
  rw::LoadStringField(kStringMenuText3, menu + CX_MENU_TEXT3, CX_MENU_TEXT_UNITS);
  menu[CX_MENU_TAIL] = 0;
  menu[CX_MENU_TAIL + 1] = 0;
}

// The data word is not cleared here: it keeps what the last run left in it
// until the dialog writes it, as the host has always seen it.
std::uint16_t Invoke(const ERegion* selection, const ERegion* document) {
  using namespace rw::shell;
  CommandRun& run = moduleState.run;
  run.dialogRunning = 1;
  run.result = 0;
  run.selection = selection;
  std::memcpy(&run.document, document, sizeof run.document);
  if (!PrepareWorkRegion(run.selection, run.document, run.work)) return 0;
  rw::host::CX_Dialog(
      RW_DIALOG_TEMPLATE, &DialogProcedure,
      static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&run.dialogFlags)), 1,
      moduleState.instance, rw::host::kVersion);
  return run.result;
}

}  // namespace

extern "C" {

RW_EXPORT std::uint32_t CantelExtensionVersion(std::uint32_t version) {
  rw::shell::moduleState.hostVersion = version;
  return CX_INTERFACE_VERSION;
}

RW_EXPORT std::uint16_t CantelExtensionInit(void*, std::uint32_t* flags) {
  if (flags != nullptr) *flags = 0;
  return 1;
}

RW_EXPORT std::uint16_t CantelExtensionEnumerate_UTF16(void*, std::int16_t index, cx_char16* menu) {
  if (index >= 1 || menu == nullptr) return 0;
  try {
    FillMenuRecord(menu);
    return 1;
  } catch (...) {
    return 0;
  }
}

RW_EXPORT std::uint16_t CantelExtensionGetMenuStatus(std::int16_t) { return 1; }

RW_EXPORT std::uint16_t CantelExtensionInvoke(void*, std::int16_t, const ERegion* selection,
                                              const ERegion* document) {
  if (document == nullptr) return 0;
  try {
    return Invoke(selection, document);
  } catch (...) {
    return 0;
  }
}

RW_EXPORT void CantelExtensionTerminate(void*) {}

}  // extern "C"

// The exports keep the interface's signatures.
static_assert(std::is_same_v<decltype(CantelExtensionVersion), CantelExtensionVersion_t>);
static_assert(std::is_same_v<decltype(CantelExtensionInit), CantelExtensionInit_t>);
static_assert(
    std::is_same_v<decltype(CantelExtensionEnumerate_UTF16), CantelExtensionEnumerate_UTF16_t>);
static_assert(
    std::is_same_v<decltype(CantelExtensionGetMenuStatus), CantelExtensionGetMenuStatus_t>);
static_assert(std::is_same_v<decltype(CantelExtensionInvoke), CantelExtensionInvoke_t>);
static_assert(std::is_same_v<decltype(CantelExtensionTerminate), CantelExtensionTerminate_t>);
