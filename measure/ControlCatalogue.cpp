#include "measure/ControlCatalogue.h"

#include <array>
#include <stdexcept>

#include "measure/ControlTable.h"
#include "measure/CpuTestFamily.h"

namespace tachyrun {
namespace {

// The CPU family's operations. The words of some lines do not match what runs
// (1006 says YUY2 on ARGB pictures, 1016 scales SD to SD, 1019 runs on one CPU
// and scales down); users compare figures across versions by these lines, so
// they stay.
constexpr CpuTestDef kResizeSdHd{
    720,  576,        PIX_ARGB32, 1920,
    1080, PIX_ARGB32, 5,          CpuCall::Resize,
    1,    false,      100,        "Img_Resize YUY2 720x576 1920x1080 Time: %03.3f ms  Res=%d"};
constexpr CpuTestDef kConvert4P{
    1920,     1080,
    PIX_YUY2, 1920,
    1080,     PIX_ARGB32,
    4,        CpuCall::ConvertReversed,
    0,        true,
    1000,     "Img_Convert2 IPPMEM 4P 1920x1080 1920x1080 YUY2 RGB32 Time: %03.3f ms  Res=%d"};
constexpr CpuTestDef kConvert1P{
    1920,     1080,
    PIX_YUY2, 1920,
    1080,     PIX_ARGB32,
    4,        CpuCall::Convert,
    0,        false,
    1000,     "Img_Convert2 IPPMEM 1P 1920x1080 1920x1080 YUY2 RGB32 Time: %03.3f ms  Res=%d"};
constexpr CpuTestDef kConvert1PBuf{
    1920,     1080,
    PIX_YUY2, 1920,
    1080,     PIX_ARGB32,
    4,        CpuCall::Convert,
    0,        true,
    1000,     "Img_Convert2 IPPMEM 1P 1920x1080 1920x1080 YUY2 RGB32 Time: %03.3f ms  Res=%d"};
constexpr CpuTestDef kResizeArgb1Cpu{720,  576,        PIX_ARGB32, 1920,
                                     1080, PIX_ARGB32, 5,          CpuCall::ResizeArgb,
                                     0,    false,      100,        kResizeArgbLineFormat};
constexpr CpuTestDef kResizeArgbNCpu{
    720,        576,
    PIX_ARGB32, 720,
    576,        PIX_ARGB32,
    5,          CpuCall::ResizeArgb,
    0,          false,
    100,        "Img_ResizeARGB Lin Multi IPPMEM RGB32 720x576 1920x1080 Time: %03.3f ms  Res=%d"};
constexpr CpuTestDef kResizeHdSd{
    1920,       1080,
    PIX_ARGB32, 720,
    576,        PIX_ARGB32,
    5,          CpuCall::Resize,
    64,         false,
    100,        "Img_Resize IPPMEM RGB32 720x576 1920x1080 LIN1 Time: %03.3f ms  Res=%d"};
constexpr CpuTestDef kMemCopy{1920, 1080,       PIX_ARGB32, 1920,
                              1080, PIX_ARGB32, 5,          CpuCall::MemCopy,
                              0,    false,      2000,       kMemCopyLineFormat};

// Code 2 belongs to no button; 3 to 5 drive the engine's preview window.
// What each code does is the engine's (engine/README.md); only 1021 and 1022
// show its text.
constexpr std::array kControls{
    ControlDef{1005, "Test", Handler::ListTest, EngineSlot::None, 1000, Headless::Runs, nullptr, 0,
               "list test: builds and releases 100000 components, time per item"},
    ControlDef{1006, "Test", Handler::ResizeSdHd, EngineSlot::Cpu1, 1001, Headless::Runs,
               &kResizeSdHd, 0,
               "Img_Resize linear, ARGB 720x576 to 1920x1080, one CPU, ms per frame"},
    ControlDef{1007, "Test", Handler::Convert4P, EngineSlot::CpuN, 1002, Headless::Runs,
               &kConvert4P, 0, "Img_Convert2 ARGB to YUY2 1920x1080, four CPUs, ms per frame"},
    ControlDef{1008, "Test", Handler::Convert1P, EngineSlot::Cpu1, 1003, Headless::Runs,
               &kConvert1P, 0, "Img_Convert2 YUY2 to ARGB 1920x1080, one CPU, ms per frame"},
    ControlDef{1009, "Test", Handler::Convert1PBuf, EngineSlot::Cpu1, 1004, Headless::Runs,
               &kConvert1PBuf, 0,
               "Img_Convert2 YUY2 to ARGB 1920x1080 with a work buffer, one CPU, ms per frame"},
    ControlDef{1015, "SD-HD 1Cpu", Handler::ResizeArgb1Cpu, EngineSlot::Cpu1, 1010, Headless::Runs,
               &kResizeArgb1Cpu, 0, "Img_ResizeARGB 720x576 to 1920x1080, one CPU, ms per frame"},
    ControlDef{1016, "SD-HD NCpu", Handler::ResizeArgbNCpu, EngineSlot::CpuN, 1011, Headless::Runs,
               &kResizeArgbNCpu, 0, "Img_ResizeARGB 720x576 to 720x576, four CPUs, ms per frame"},
    ControlDef{1017, "EfxTst", Handler::EffectTest, EngineSlot::GpuSd, 1012, Headless::Runs,
               nullptr, 0,
               "one perspective render of the image of edit 1034 at 720x576 on the GPU engine"},
    ControlDef{1018, "GpuW Show", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 3, "engine test 3: show the preview"},
    ControlDef{1019, "HD-SD NCpu", Handler::ResizeHdSd, EngineSlot::Cpu1, 1014, Headless::Runs,
               &kResizeHdSd, 0,
               "Img_Resize area, ARGB 1920x1080 to 720x576, one CPU, ms per frame"},
    ControlDef{1020, "Test", Handler::LockTest, EngineSlot::None, 0, Headless::OnRequest, nullptr,
               0, "lock test: its watchdog keeps the lock, so it blocks the program for good"},
    ControlDef{1021, "GPU 720x576", Handler::GpuTestSd, EngineSlot::GpuSd, 1000, Headless::Runs,
               nullptr, 1,
               "engine test 1 at 720x576: upload, conversion, scaling, download per frame"},
    ControlDef{1022, "GPU 1920x1080", Handler::GpuTestHd, EngineSlot::GpuHd, 1001, Headless::Runs,
               nullptr, 1,
               "engine test 1 at 1920x1080: upload, conversion, scaling, download per frame"},
    ControlDef{1023, "GpuW Hide", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 4, "engine test 4: hide the preview"},
    ControlDef{1024, "Tex>GpuW", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs, nullptr,
               5, "engine test 5: send a picture to the preview"},
    ControlDef{1025, "GPU Test6", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 6, "engine test 6: the upload stage of test 1 alone"},
    ControlDef{1026, "GPU Test7", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 7, "engine test 7: the download stage of test 1 alone"},
    ControlDef{1027, "GPU Test8", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 8, "engine test 8: the YUY2-to-ARGB stage of test 1 alone"},
    ControlDef{1028, "GPU Test9", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 9, "engine test 9: the scaling stage of test 1 alone"},
    ControlDef{1029, "GPU Test10", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 10, "engine test 10: ARGB to YUY2 as a picture call"},
    ControlDef{1030, "GPU Test11", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 11, "engine test 11: a perspective render as a picture call"},
    ControlDef{1031, "GPU Test12", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 12, "engine test 12: engine description"},
    ControlDef{1032, "GPU Test13", Handler::GpuCommand, EngineSlot::GpuSd, 0, Headless::Runs,
               nullptr, 13, "engine test 13: preview state"},
    ControlDef{1033, "CPU 1920x1080", Handler::MemCopy, EngineSlot::Cpu1, 1001, Headless::Runs,
               &kMemCopy, 0,
               "memcpy of one 1920x1080 ARGB frame: frames per second, ms per frame, MB/s"},
    ControlDef{1035, "...", Handler::BrowseImage, EngineSlot::None, 0, Headless::NeedsUser, nullptr,
               0, "chooses the image file of edit 1034 in a file dialog"},
};

}  // namespace

std::span<const ControlDef> Controls() {
  return kControls;
}

const ControlDef* FindControl(int iControl) {
  return FindByControl(std::span<const ControlDef>(kControls), iControl);
}

const ControlDef& ControlOf(Handler eHandler) {
  for (const ControlDef& def : kControls) {
    if (def.eHandler == eHandler) return def;
  }
  throw std::logic_error("a handler without a control");
}

}  // namespace tachyrun
