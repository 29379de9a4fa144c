#pragma once

#include <QtWidgets/QDialog>
#include <optional>

#include "desktop/importjob.h"

class QComboBox;
class QListWidget;

namespace kortavin::desktop {

class FileField;

// Asks for the text file of an import, how it is written, the table that it goes to, and which of the table's
// fields are to be filled.
class ImportDialog : public QDialog {
  public:
    // Throws CException when the tables cannot be listed.
    ImportDialog(QWidget* parent, CGeoDatabase& database);

    QString Path() const;
    TextEncoding Encoding() const;
    // Without the positions, which nobody has been asked for yet.
    ImportRequest Request() const;
    void accept() override;

  private:
    void ListFields();
    void Check() const;

    CGeoDatabase& m_database;
    FileField* m_file;
    QComboBox* m_encoding;
    QComboBox* m_separator;
    QComboBox* m_table;
    QListWidget* m_fields;
    std::vector<CString> m_tableNames;
    std::vector<CString> m_fieldNames;
};

// Has the user match the text's columns to the fields; nothing when that was cancelled. Throws Failure where
// there is nothing to match.
std::optional<std::vector<WORD>> MatchColumns(QWidget& window, const TextHead& head,
                                              const std::vector<CString>& fields);

}  // namespace kortavin::desktop
