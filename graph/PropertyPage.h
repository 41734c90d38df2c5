#pragma once
// The "Property Page" dialog of one element: a row per editable property
// (a check box for a flag, a list for an enumeration, the serialised text
// for the rest), with OK, Cancel and Apply. OK and Apply set the values the
// user changed; a text that isn't a value of its property is named in the
// dialog and leaves that property alone.

#include <gst/gst.h>

#include <QDialog>
#include <QString>
#include <vector>

class QLabel;
class QWidget;

class CPropertyPage : public QDialog {
  Q_OBJECT

 public:
  // Keeps a reference to `element` for the dialog's life.
  CPropertyPage(GstElement* element, QWidget* parent);
  ~CPropertyPage() override;

  // Sets every changed row; false when a row's text was refused.
  bool Apply();

  // The editor of `property`, or null (for tests and callers that fill it).
  QWidget* EditorOf(const char* property) const;

 protected:
  void accept() override;

 private:
  struct Row {
    GParamSpec* property;
    QWidget* editor;
    QString shown;  // the value as the row showed it last
  };

  QWidget* MakeEditor(GParamSpec* property, const GValue& value, QString* shown);
  QString EditorText(const Row& row) const;
  bool SetFromRow(Row* row);

  GstElement* m_pElement;
  std::vector<Row> m_Rows;
  QLabel* m_pStatus;
};
