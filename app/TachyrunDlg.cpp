#include "app/TachyrunDlg.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>

#include "app/AboutDlg.h"
#include "app/AppIcon.h"
#include "app/DialogBuilder.h"

namespace tachyrun {

CTestBitmap* g_pTestImage = nullptr;

namespace {

constexpr unsigned kSysCommandMask = 0xFFF0;
constexpr unsigned kSysCommandClose = 0xF060;
constexpr int kIconMetric = 32;  // the system's icon size
// QLineEdit keeps this many pixels free on each side of its text.
constexpr int kLineEditSideMargin = 2;

// The platform's file dialog; an empty answer is a cancel.
std::optional<std::string> AskForFile(const std::string& strTitle, const std::string& strStart,
                                      const std::string& strFilter) {
  // The handler's busy cursor would cover the file dialog too: a user picks a
  // file with the ordinary arrow, as over any other window.
  QApplication::setOverrideCursor(QCursor(Qt::ArrowCursor));
  const QString path = QFileDialog::getOpenFileName(nullptr, QString::fromStdString(strTitle),
                                                    QString::fromLocal8Bit(strStart.c_str()),
                                                    QString::fromStdString(strFilter));
  QApplication::restoreOverrideCursor();
  if (path.isEmpty()) return std::nullopt;
  return path.toLocal8Bit().toStdString();
}

}  // namespace

CTachyrunDlg::CTachyrunDlg(QWidget* pParent)
    : QDialog(pParent), m_hIcon(LoadAppIcon()), m_FileChooser(AskForFile) {
  m_Controls = BuildDialog(*this, MainDialogTemplate(), m_hIcon);
  DoDataExchange();
  ConnectHandlers();
  g_pTestImage = nullptr;
}

// The engine library goes first and the engines after it, as members; the
// test bitmap stays alive for whoever looks at it after the dialog.
CTachyrunDlg::~CTachyrunDlg() {
  ReleaseConverterLib();
}

// The result edits are found by id, through the catalogue, when a line is
// written; only the path of edit 1034 is exchanged.
void CTachyrunDlg::DoDataExchange() {
  UpdateData(false);
}

void CTachyrunDlg::ConnectHandlers() {
  auto* quit = static_cast<QPushButton*>(Control(kIdOk));
  connect(quit, &QPushButton::clicked, this, &QDialog::accept);
  for (const auto& [iId, widget] : m_Controls) {
    auto* button = qobject_cast<QPushButton*>(widget);
    if (button == nullptr || iId == kIdOk) continue;
    const int iControl = iId;
    connect(button, &QPushButton::clicked, this, [this, iControl] { RunControl(iControl); });
  }
}

void CTachyrunDlg::Create() {
  if (m_bInitDone) return;
  m_bInitDone = true;
  OnInitDialog();
}

int CTachyrunDlg::DoModal() {
  Create();
  return exec();
}

bool CTachyrunDlg::OnInitDialog() {
  InitConverterLib();
  // Linux has no module handle; the engines never look at it.
  m_PixCpu1.Img_InitConverter(-1, 1, nullptr, 720, 576, 0);
  m_PixCpuN.Img_InitConverter(-1, 4, nullptr, 720, 576, 0);
  m_PixGpuSd.Img_InitConverter(-2, 1, nullptr, 720, 576, 0);
  m_PixGpuHd.Img_InitConverter(-2, 1, nullptr, 1920, 1080, 0);

  // A dialog window on Linux has no system menu of its own; the about entry
  // lives in the dialog's context menu instead.
  const char* szAbout = LoadStringResource(kStringAboutEntry);
  if (szAbout != nullptr && szAbout[0] != '\0') {
    m_pSysMenu = new QMenu(this);
    m_pSysMenu->addSeparator();
    QAction* about = m_pSysMenu->addAction(QString::fromUtf8(szAbout));
    connect(about, &QAction::triggered, this, [this] { OnSysCommand(kCommandAbout, 0); });
  }
  setWindowIcon(m_hIcon);
  return true;
}

void CTachyrunDlg::OnSysCommand(unsigned nID, long /*lParam*/) {
  if ((nID & kSysCommandMask) == kCommandAbout) {
    CAboutDlg dlgAbout(this);
    dlgAbout.DoModal();
  } else if ((nID & kSysCommandMask) == kSysCommandClose) {
    reject();
  }
}

void CTachyrunDlg::contextMenuEvent(QContextMenuEvent* pEvent) {
  if (m_pSysMenu != nullptr) m_pSysMenu->exec(pEvent->globalPos());
}

void CTachyrunDlg::paintEvent(QPaintEvent* pEvent) {
  if (!isMinimized()) {
    QDialog::paintEvent(pEvent);
    return;
  }
  QPainter painter(this);
  const int x = (width() - kIconMetric + 1) / 2;
  const int y = (height() - kIconMetric + 1) / 2;
  painter.drawPixmap(x, y, m_hIcon.pixmap(kIconMetric, kIconMetric));
}

QWidget* CTachyrunDlg::Control(int iId) const {
  const auto it = m_Controls.find(iId);
  return it == m_Controls.end() ? nullptr : it->second;
}

QString CTachyrunDlg::ControlText(int iId) const {
  const auto* edit = qobject_cast<const QLineEdit*>(Control(iId));
  return edit == nullptr ? QString() : edit->text();
}

QLineEdit* CTachyrunDlg::ResultEdit(int iId) const {
  return qobject_cast<QLineEdit*>(Control(iId));
}

void CTachyrunDlg::SetResultText(int iEditId, const char* szText) {
  QLineEdit* edit = ResultEdit(iEditId);
  if (edit == nullptr) return;
  const QString text = QString::fromLocal8Bit(szText);
  edit->setText(text);
  edit->setCursorPosition(0);  // a long line shows its start, as a fresh edit text does
  // A GPU message is often wider than its edit; the tooltip shows all of it.
  const QMargins margins = edit->textMargins();
  const int iRoom =
      edit->contentsRect().width() - margins.left() - margins.right() - 2 * kLineEditSideMargin;
  edit->setToolTip(edit->fontMetrics().horizontalAdvance(text) > iRoom ? text : QString());
}

void CTachyrunDlg::UpdateData(bool bSaveAndValidate) {
  auto* edit = ResultEdit(kImageEditControl);
  if (bSaveAndValidate) {
    m_strImageFile = edit->text().toLocal8Bit().toStdString();
  } else {
    edit->setText(QString::fromLocal8Bit(m_strImageFile.c_str()));
  }
}

}  // namespace tachyrun
