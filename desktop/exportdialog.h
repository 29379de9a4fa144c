#pragma once

#include <QtWidgets/QDialog>

#include "desktop/exportjob.h"

class QCheckBox;
class QComboBox;

namespace kortavin::desktop {

class FileField;

// Asks for the file of an export and for its layout. A file that is there is replaced only if the user
// agrees.
class ExportDialog : public QDialog {
  public:
    // `database`: the file that is read from, which no export may replace; empty for none.
    ExportDialog(QWidget* parent, const QString& database);

    ExportRequest Request() const;
    void accept() override;

  private:
    bool MayWrite();

    QString m_database;
    FileField* m_file;
    QComboBox* m_layout;
    QComboBox* m_quote;
    QCheckBox* m_header;
};

}  // namespace kortavin::desktop
