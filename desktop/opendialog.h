#pragma once

#include <QtWidgets/QDialog>
#include <functional>

class QLineEdit;
class QRadioButton;

namespace kortavin::desktop {

// Asks for a database: an SQLite file, or any other by its ODBC connection string. Stays open for another try
// while what the user chose cannot be opened.
class OpenDialog : public QDialog {
  public:
    // Opens the path or connection string, tells the user why it cannot be, and answers whether it could.
    using OpenSource = std::function<bool(const QString& source)>;

    OpenDialog(QWidget* parent, OpenSource open);
    void accept() override;

  private:
    QWidget* MakeFilePart();
    QWidget* MakeOdbcPart();
    QLineEdit* MakeField(const char* name, QRadioButton& kind);
    void BrowseFiles();
    void HidePassword();
    QString Source() const;

    OpenSource m_open;
    QRadioButton* m_fileKind;
    QRadioButton* m_odbcKind;
    QLineEdit* m_file;
    QLineEdit* m_connection;
    QLineEdit* m_user;
    QLineEdit* m_password;
};

}  // namespace kortavin::desktop
