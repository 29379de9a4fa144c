#pragma once

#include <QtCore/QVariant>
#include <QtWidgets/QWidget>
#include <functional>
#include <initializer_list>
#include <utility>

class QComboBox;
class QFormLayout;
class QLineEdit;

// What the host's dialogs are put together from.
namespace kortavin::desktop {

// A field for the path of a file, with a button beside it that asks for one.
class FileField : public QWidget {
  public:
    using Ask = std::function<QString(const QString& path)>;  // empty: cancelled
    explicit FileField(Ask ask);

    QString Path() const;
    // A row of the form; the label's letter goes to the field.
    void AddTo(QFormLayout& form, const QString& label);

  private:
    QLineEdit* m_field;
};

// A combo box of texts (UTF-8) and what they stand for.
QComboBox* MakeChoice(const char* name, std::initializer_list<std::pair<const char*, QVariant>> choices);

}  // namespace kortavin::desktop
