#pragma once

#include <QPlainTextEdit>
#include <map>
#include <vector>

#include "engine/lit_source.h"

class QSyntaxHighlighter;

namespace kiva {

/// One source text, lit. A margin has the line numbers and a sign for what the line does, so that
/// nothing is told by colour alone; a tip tells the place below the pointer in words.
class SourceText : public QPlainTextEdit {
  Q_OBJECT

 public:
  /// `module` is that whose lines the instance has of the file.
  SourceText(const LitSource::Instance& instance, QWidget* parent = nullptr);

  /// What the instant shows; nothing where the text does not fit the module.
  void light(const std::vector<LitSource::Lit>& lit, const std::vector<LitSource::Looked>& looked);
  /// The lines of the chosen signal, numbered from 1.
  void mark_lines(const std::vector<int>& lines);
  const std::vector<int>& marked_lines() const { return marked_; }
  /// Names that a line of the module has outside its comments, in their order, each once.
  QStringList names_of_line(int line) const;
  /// Lines of the module that have the name.
  std::vector<int> lines_of(const QString& name) const;
  int current_line() const { return textCursor().blockNumber() + 1; }
  /// The signs of a line: started, waits, ended, killed.
  QString signs_of_line(int line) const;
  /// What is lit at that place of the text, in words; empty for nothing.
  QString words_at(int line, int column) const;
  /// The words that stand there, in one line.
  QString text_of(const SourcePlace& place) const;
  void look_changed();

  /// The signs, in the order of the legend, and their words.
  struct Sign {
    const char* sign;
    const char* words;
    bool Light::*lit;
    QColor (*colour)();
  };
  static const std::vector<Sign>& signs();

 Q_SIGNALS:
  /// By the mouse or the keys.
  void line_chosen(int line);

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  friend class SourceMargin;
  void paint_margin(QPaintEvent* event);
  int margin_width() const;
  void fit_margin();
  void show_marks();
  QTextCursor cursor_at(const SourcePlace& place) const;
  QString without_comment(int line) const;

  QString module_;
  int first_line_ = 1, last_line_ = 1;  ///< of the module
  int first_line_shown_ = 0;            ///< to be shown first; 0 when that has been done
  QSyntaxHighlighter* colours_;         ///< null for none
  QWidget* margin_;
  std::vector<LitSource::Lit> lit_;
  std::vector<LitSource::Looked> looked_;
  std::vector<int> marked_;
  std::map<int, Light> by_line_;
};

}  // namespace kiva
