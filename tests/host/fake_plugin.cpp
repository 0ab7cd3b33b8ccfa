// A stand-in plug-in for testing the runner itself: it finds the engine the
// way a plug-in does (by name among the loaded modules), asks the region
// questions, fills the dialog's lists, and on OK imports the first groove of
// the groove folder into the selected staff. Nothing here is the product.
#include <dlfcn.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "cantel/cantel.h"

namespace {

void* host() {
  static void* module = dlopen("libCantelEngine.so", RTLD_NOW | RTLD_NOLOAD);
  return module;
}

template <typename F>
F* bind(const char* name) {
  return host() == nullptr ? nullptr : reinterpret_cast<F*>(dlsym(host(), name));
}

constexpr uint32_t v = CX_INTERFACE_VERSION;
ERegion work{};
uint32_t flags = 0;
uint16_t result = 0;

uint16_t ask(const char16_t* text) {
  auto* alert = bind<CX_AlertMessage_UTF16_t>("CX_AlertMessage_UTF16");
  return alert == nullptr ? 0 : alert(0, CX_MB_QUESTION_YESNO, 0, text, v);
}

int64_t send(void* dialog, int control, uint32_t message, uint64_t w, const char16_t* text) {
  return bind<SendDlgItemMessageW_t>("SendDlgItemMessageW")(
      dialog, control, message, w, static_cast<int64_t>(reinterpret_cast<intptr_t>(text)));
}

void import_first_groove() {
  char16_t folder[CX_PATH_UNITS] = {};
  bind<CX_GetCantelPath_t>("CX_GetCantelPath")(CX_PATH_COMPONENT_FILES, folder, v);
  std::u16string path(folder);
  path += u"/Rhythm Weave/Basic Rock.mid";
  std::vector<uint8_t> block(CX_MIDI_BLOCK_SIZE, 0);
  std::memcpy(block.data(), &work, CX_REGION_SIZE);
  for (size_t i = 0; i < path.size() && i < CX_PATH_UNITS - 1; ++i) {
    cx_put_u16(block.data(), CX_MIDI_BLOCK_PATH + 2 * i, path[i]);
  }
  if (auto* import = bind<CX_ProcessMidiDataNoSplit_t>("CX_ProcessMidiDataNoSplit")) {
    import(block.data(), v);
  }
}

uint8_t procedure(void* dialog, uint32_t message, uint64_t wparam, int64_t, uint32_t* data) {
  auto* end = bind<CX_EndDialog_t>("CX_EndDialog");
  switch (message) {
    case CX_WM_INITDIALOG:
      send(dialog, 2002, CX_LB_RESETCONTENT, 0, nullptr);
      send(dialog, 2002, CX_LB_ADDSTRING, 0, u"Basic Rock");
      send(dialog, 1019, CX_CB_ADDSTRING, 0, u"Notation with Percussion Map");
      send(dialog, 1019, CX_CB_SETCURSEL, 0, nullptr);
      bind<CX_SetDlgCntlVal_UTF16_t>("CX_SetDlgCntlVal_UTF16")(dialog, 21, 0, 1, v);
      bind<CX_EnableDlgItem_t>("CX_EnableDlgItem")(dialog, 1020, 0, v);
      return 1;
    case CX_WM_TIMER:
      end(dialog, v);
      return 1;
    case CX_WM_COMMAND:
      if ((wparam & 0xFFFF) == 2) {
        *data |= 0x10000;
        end(dialog, v);
        return 1;
      }
      if ((wparam & 0xFFFF) == 1) {
        if (send(dialog, 2002, CX_LB_GETCURSEL, 0, nullptr) < 0) {
          bind<CX_SetTimer_t>("CX_SetTimer")(dialog, 1, 100, v);  // leave on the next tick
          return 1;
        }
        bind<CX_StartCantelEdit_t>("CX_StartCantelEdit")("Fake", v);
        import_first_groove();
        bind<CX_EndCantelEdit_t>("CX_EndCantelEdit")(v);
        result = 1;
        end(dialog, v);
        return 1;
      }
      return 0;
    default:
      return 0;
  }
}

}  // namespace

extern "C" {
__attribute__((visibility("default"))) uint32_t CantelExtensionVersion(uint32_t) { return v; }
__attribute__((visibility("default"))) uint16_t CantelExtensionInit(void*, uint32_t* f) {
  *f = 0;
  return 1;
}
__attribute__((visibility("default"))) uint16_t CantelExtensionEnumerate_UTF16(void*, int16_t index,
                                                                               cx_char16* menu) {
  if (index != 0) return 0;
  std::memcpy(menu, u"Fake", 10);
  return 1;
}
__attribute__((visibility("default"))) uint16_t CantelExtensionGetMenuStatus(int16_t) { return 1; }
__attribute__((visibility("default"))) uint16_t CantelExtensionInvoke(void*, int16_t,
                                                                      const ERegion* selection,
                                                                      const ERegion* document) {
  result = 0;
  if (selection != nullptr) {
    work = *selection;
    if (work.startPosition != 0 || work.endPosition != CX_END_OF_MEASURE) {
      if (ask(u"partial?") != CX_ID_YES) return 0;
    }
  } else {
    if (ask(u"everything?") != CX_ID_YES) return 0;
    work = *document;
  }
  bind<CX_Dialog_t>("CX_Dialog")(102, &procedure, reinterpret_cast<uint64_t>(&flags), 1, nullptr, v);
  return result;
}
__attribute__((visibility("default"))) void CantelExtensionTerminate(void*) {}
}
