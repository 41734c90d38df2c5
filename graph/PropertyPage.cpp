#include "graph/PropertyPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "graph/GraphInfo.h"

namespace {

constexpr const char* kCaption = "Property Page";
constexpr const char* kTrueText = "true";
constexpr const char* kFalseText = "false";

QString Serialized(const GValue& value) {
  gchar* text = gst_value_serialize(&value);
  QString shown = QString::fromUtf8(text ? text : "");
  g_free(text);
  return shown;
}

}  // namespace

CPropertyPage::CPropertyPage(GstElement* element, QWidget* parent)
    : QDialog(parent), m_pElement(GST_ELEMENT(gst_object_ref(element))), m_pStatus(new QLabel) {
  setWindowTitle(kCaption);
  auto* form = new QFormLayout;
  for (GParamSpec* property : EditableProperties(GST_OBJECT(element))) {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, property->value_type);
    g_object_get_property(G_OBJECT(element), property->name, &value);
    Row row{property, nullptr, QString()};
    row.editor = MakeEditor(property, value, &row.shown);
    g_value_unset(&value);
    row.editor->setObjectName(property->name);
    row.editor->setToolTip(QString::fromUtf8(g_param_spec_get_blurb(property)));
    form->addRow(QString::fromUtf8(property->name), row.editor);
    m_Rows.push_back(row);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel |
                                       QDialogButtonBox::Apply);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
          [this] { Apply(); });
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(m_pStatus);
  layout->addWidget(buttons);
  // The page opens one unit right and down of its parent's corner.
  move(parent ? parent->mapToGlobal(QPoint(1, 1)) : QPoint(1, 1));
}

CPropertyPage::~CPropertyPage() {
  gst_object_unref(m_pElement);
}

QWidget* CPropertyPage::MakeEditor(GParamSpec* property, const GValue& value, QString* shown) {
  if (G_IS_PARAM_SPEC_BOOLEAN(property)) {
    auto* box = new QCheckBox;
    box->setChecked(g_value_get_boolean(&value));
    *shown = box->isChecked() ? kTrueText : kFalseText;
    return box;
  }
  if (G_IS_PARAM_SPEC_ENUM(property)) {
    auto* list = new QComboBox;
    GEnumClass* enumClass = G_PARAM_SPEC_ENUM(property)->enum_class;
    for (guint i = 0; i < enumClass->n_values; ++i) {
      list->addItem(QString::fromUtf8(enumClass->values[i].value_nick));
      if (enumClass->values[i].value == g_value_get_enum(&value)) list->setCurrentIndex(int(i));
    }
    *shown = list->currentText();
    return list;
  }
  *shown = Serialized(value);
  return new QLineEdit(*shown);
}

QString CPropertyPage::EditorText(const Row& row) const {
  if (auto* box = qobject_cast<QCheckBox*>(row.editor))
    return box->isChecked() ? kTrueText : kFalseText;
  if (auto* list = qobject_cast<QComboBox*>(row.editor)) return list->currentText();
  return static_cast<QLineEdit*>(row.editor)->text();
}

bool CPropertyPage::SetFromRow(Row* row) {
  const QString text = EditorText(*row);
  if (text == row->shown) return true;
  GValue value = G_VALUE_INIT;
  g_value_init(&value, row->property->value_type);
  const bool valid =
      gst_value_deserialize_with_pspec(&value, text.toUtf8().constData(), row->property) &&
      !g_param_value_validate(row->property, &value);
  if (valid) {
    g_object_set_property(G_OBJECT(m_pElement), row->property->name, &value);
    row->shown = text;
  }
  g_value_unset(&value);
  return valid;
}

bool CPropertyPage::Apply() {
  QStringList refused;
  for (Row& row : m_Rows) {
    if (!SetFromRow(&row)) refused << QString::fromUtf8(row.property->name);
  }
  m_pStatus->setText(refused.isEmpty() ? QString()
                                       : QStringLiteral("Not a value of: ") + refused.join(", "));
  return refused.isEmpty();
}

QWidget* CPropertyPage::EditorOf(const char* property) const {
  for (const Row& row : m_Rows) {
    if (g_strcmp0(row.property->name, property) == 0) return row.editor;
  }
  return nullptr;
}

void CPropertyPage::accept() {
  if (Apply()) QDialog::accept();
}
