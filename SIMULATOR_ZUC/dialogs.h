#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace kiva {

/// An answer about unsaved work.
enum class Unsaved { save, discard, cancel };

/// How the window asks and tells. A test puts its own answers in the place of the modal boxes.
struct Dialogs {
  /// Shows the text until the person has read it.
  std::function<void(QWidget* parent, const QString& text)> show_message;
  /// The name of the chosen file; empty when the person cancels.
  std::function<QString(QWidget* parent, const QString& caption, const QString& filter)> ask_file;
  /// The same of a file that is to be written.
  std::function<QString(QWidget* parent, const QString& caption, const QString& filter)> ask_save;
  /// What is to become of unsaved work before a window closes. Where nobody can answer, it goes.
  std::function<Unsaved(QWidget* parent, const QString& text)> ask_unsaved;
  /// A question; false where nobody can answer.
  std::function<bool(QWidget* parent, const QString& text)> ask_whether;
};

/// The dialogs in use; at first those of the toolkit.
Dialogs& dialogs();

/// Shows what the library wants a person to read as messages of the window too.
void show_library_messages();

}  // namespace kiva
