#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace kiva {

/// How the window asks and tells. A test puts its own answers in the place of the modal boxes.
struct Dialogs {
  /// Shows the text until the person has read it.
  std::function<void(QWidget* parent, const QString& text)> show_message;
  /// The name of the chosen file; empty when the person cancels.
  std::function<QString(QWidget* parent, const QString& caption, const QString& filter)> ask_file;
  /// The same of a file that is to be written.
  std::function<QString(QWidget* parent, const QString& caption, const QString& filter)> ask_save;
};

/// The dialogs in use; at first those of the toolkit.
Dialogs& dialogs();

/// Shows what the library wants a person to read as messages of the window too.
void show_library_messages();

}  // namespace kiva
