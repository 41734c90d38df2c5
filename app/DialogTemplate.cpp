#include "app/DialogTemplate.h"

#include <array>

namespace tachyrun {
namespace {

using K = ControlKind;
constexpr bool on = true;
constexpr bool off = false;

// The layout is kept as it was drawn: the dialog is only 108 units high, so
// everything from y 107 down lies outside the client area and is reached by
// Tab alone. 1003 and 1004 overlap, and 1018/1023/1024 lie over 1002's row.
constexpr std::array kMainControls{
    ControlTemplate{kIdOk, K::DefaultButton, ">Quit", 305, 82, 59, 16, on, on, off},
    ControlTemplate{1000, K::Edit, "", 8, 10, 360, 13, on, on, on},
    ControlTemplate{1001, K::Edit, "", 8, 29, 360, 13, on, on, on},
    ControlTemplate{1002, K::Edit, "", 5, 143, 358, 13, on, on, on},
    ControlTemplate{1003, K::Edit, "", 8, 128, 358, 13, on, on, on},
    ControlTemplate{1004, K::Edit, "", 4, 128, 358, 13, on, on, on},
    ControlTemplate{1005, K::Button, "Test", 160, 261, 50, 14, off, on, off},
    ControlTemplate{1006, K::Button, "Test", 212, 261, 50, 14, off, on, off},
    ControlTemplate{1007, K::Button, "Test", 264, 261, 50, 14, off, on, off},
    ControlTemplate{1008, K::Button, "Test", 107, 261, 50, 14, off, on, off},
    ControlTemplate{1009, K::Button, "Test", 55, 263, 50, 14, off, on, off},
    ControlTemplate{1010, K::Edit, "", 9, 150, 357, 13, on, on, on},
    ControlTemplate{1011, K::Edit, "", 9, 166, 357, 13, on, on, on},
    ControlTemplate{1012, K::Edit, "", 9, 182, 357, 13, on, on, on},
    ControlTemplate{1013, K::Edit, "", 9, 198, 357, 13, on, on, on},
    ControlTemplate{1014, K::Edit, "", 10, 214, 357, 13, on, on, on},
    ControlTemplate{1015, K::Button, "SD-HD 1Cpu", 4, 230, 50, 14, on, on, off},
    ControlTemplate{1016, K::Button, "SD-HD NCpu", 55, 230, 50, 14, on, on, off},
    ControlTemplate{1017, K::Button, "EfxTst", 110, 230, 50, 14, on, on, off},
    ControlTemplate{1018, K::Button, "GpuW Show", 215, 134, 50, 14, off, off, off},
    ControlTemplate{1019, K::Button, "HD-SD NCpu", 4, 245, 50, 14, on, on, off},
    ControlTemplate{1020, K::Button, "Test", 246, 328, 50, 14, on, on, off},
    ControlTemplate{1021, K::Button, "GPU 720x576", 29, 50, 90, 16, on, on, off},
    ControlTemplate{1022, K::Button, "GPU 1920x1080", 139, 50, 90, 16, on, on, off},
    ControlTemplate{1023, K::Button, "GpuW Hide", 266, 134, 50, 14, off, off, off},
    ControlTemplate{1024, K::Button, "Tex>GpuW", 317, 134, 50, 14, off, off, off},
    ControlTemplate{1025, K::Button, "GPU Test6", 161, 230, 50, 14, off, off, off},
    ControlTemplate{1026, K::Button, "GPU Test7", 212, 230, 50, 14, off, off, off},
    ControlTemplate{1027, K::Button, "GPU Test8", 264, 230, 50, 14, off, off, off},
    ControlTemplate{1028, K::Button, "GPU Test9", 316, 230, 50, 14, off, off, off},
    ControlTemplate{1029, K::Button, "GPU Test10", 160, 245, 50, 14, off, off, off},
    ControlTemplate{1030, K::Button, "GPU Test11", 212, 245, 50, 14, off, off, off},
    ControlTemplate{1031, K::Button, "GPU Test12", 264, 245, 50, 14, off, off, off},
    ControlTemplate{1032, K::Button, "GPU Test13", 316, 245, 50, 14, off, off, off},
    ControlTemplate{1033, K::Button, "CPU 1920x1080", 249, 50, 90, 16, on, on, off},
    ControlTemplate{1034, K::Edit, "", 7, 115, 332, 14, on, on, off},
    ControlTemplate{1035, K::Button, "...", 341, 115, 26, 14, on, on, off},
    ControlTemplate{kIdStaticNone, K::Static, "Test Image File", 9, 107, 50, 8, on, on, off},
};

// An icon control takes the size of its icon (32 x 32), so it has none here.
constexpr std::array kAboutControls{
    ControlTemplate{kIdStaticNone, K::Icon, "", 11, 17, 0, 0, on, on, off},
    ControlTemplate{kIdStaticNone, K::Static, "Tachyrun 1.0", 40, 10, 119, 8, on, on, off},
    ControlTemplate{kIdStaticNone, K::Static, "Picture throughput benchmark", 40, 25, 119, 8, on,
                    on, off},
    ControlTemplate{kIdOk, K::DefaultButton, "OK", 178, 7, 50, 16, on, on, off},
};

constexpr DialogTemplate kMain{kTemplateMain, "Tachyrun", 374, 108, kMainControls};
constexpr DialogTemplate kAbout{kTemplateAbout, "About Tachyrun", 235, 55, kAboutControls};

}  // namespace

const DialogTemplate& MainDialogTemplate() {
  return kMain;
}
const DialogTemplate& AboutDialogTemplate() {
  return kAbout;
}

const ControlTemplate* FindControl(const DialogTemplate& tmpl, int id) {
  for (const ControlTemplate& c : tmpl.controls) {
    if (c.iId == id) return &c;
  }
  return nullptr;
}

const char* LoadStringResource(int id) {
  switch (id) {
    case kStringAboutEntry:
      return "&About su Tachyrun...";
    case kStringSpare:
      return "Prova text";
    default:
      return nullptr;
  }
}

}  // namespace tachyrun
