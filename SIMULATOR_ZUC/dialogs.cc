// Modal boxes behind two functions, which tests replace by answers of their own.

#include "SIMULATOR_ZUC/dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

#include "forms/forms.h"

namespace kiva {

namespace {

void show_message_box(QWidget* parent, const QString& text) {
  QMessageBox box(QMessageBox::Warning, QObject::tr("KIVA"), text, QMessageBox::Ok, parent);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

QString ask_for_file(QWidget* parent, const QString& caption, const QString& filter) {
  return QFileDialog::getOpenFileName(parent, caption, QString(), filter);
}

QString ask_for_new_file(QWidget* parent, const QString& caption, const QString& filter) {
  return QFileDialog::getSaveFileName(parent, caption, QString(), filter);
}

bool nobody_answers() {
  return QApplication::platformName() == "offscreen" || QApplication::platformName() == "minimal";
}

Unsaved ask_about_unsaved(QWidget* parent, const QString& text) {
  if (nobody_answers()) return Unsaved::discard;
  switch (QMessageBox::question(parent, QObject::tr("KIVA"), text,
                                QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                                QMessageBox::Save)) {
    case QMessageBox::Save:
      return Unsaved::save;
    case QMessageBox::Discard:
      return Unsaved::discard;
    default:
      return Unsaved::cancel;
  }
}

bool ask_yes_or_no(QWidget* parent, const QString& text) {
  return !nobody_answers() &&
         QMessageBox::question(parent, QObject::tr("KIVA"), text) == QMessageBox::Yes;
}

class WindowMessages : public message_presenter {
 public:
  void alert(const std::string& text) override { show(text); }
  void message(const std::string& text) override { show(text); }
  void big_message(const std::string& text, int) override { show(text); }
  void display(const std::string& title, const std::string& text, int) override {
    show(title + "\n\n" + text);
  }

 private:
  static void show(const std::string& text) {
    dialogs().show_message(QApplication::activeWindow(), QString::fromStdString(text));
  }
};

}  // namespace

Dialogs& dialogs() {
  static Dialogs in_use{show_message_box, ask_for_file, ask_for_new_file, ask_about_unsaved,
                        ask_yes_or_no};
  return in_use;
}

void show_library_messages() {
  static WindowMessages messages;
  set_message_presenter(&messages);
}

}  // namespace kiva
