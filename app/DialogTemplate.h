#pragma once
// The dialog templates of the program as data: every control of the test
// dialog (102) and of the about box (100) with its id, kind, text, geometry in
// dialog units and state, plus the string table and version record. The Qt
// dialogs are built from these tables, and the tests check the widgets
// against them.

#include <cstdint>
#include <span>

namespace tachyrun {

enum class ControlKind { DefaultButton, Button, Edit, Static, Icon };

struct ControlTemplate {
  int iId;  // -1 for a static without id
  ControlKind eKind;
  const char* szText;
  int x, y, cx, cy;  // dialog units
  bool bEnabled;
  bool bVisible;
  bool bReadOnly;  // edits only
};

struct DialogTemplate {
  int iId;
  const char* szCaption;
  int cx, cy;  // client size in dialog units
  std::span<const ControlTemplate> controls;
};

inline constexpr int kIdOk = 1;
inline constexpr int kIdStaticNone = -1;
inline constexpr int kIconMain = 128;
inline constexpr int kTemplateAbout = 100;
inline constexpr int kTemplateMain = 102;
inline constexpr int kStringAboutEntry = 101;
inline constexpr int kStringSpare = 102;
inline constexpr unsigned kCommandAbout = 16;

// The dialog font: "MS Shell Dlg" 8 of the original layout does not exist
// here, so the dialog pins DejaVu Sans 8, which Debian always installs.
inline constexpr const char* kDialogFontFamily = "DejaVu Sans";
inline constexpr int kDialogFontPoints = 8;

inline constexpr const char* kVersionText = "1.3.375.0";
inline constexpr uint16_t kVersionLanguage = 0x0410;

const DialogTemplate& MainDialogTemplate();
const DialogTemplate& AboutDialogTemplate();
// The control of `id` in `tmpl`, or null.
const ControlTemplate* FindControl(const DialogTemplate& tmpl, int id);
// Entry of the string table, or null for an unknown id.
const char* LoadStringResource(int id);

}  // namespace tachyrun
