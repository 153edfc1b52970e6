#pragma once

#include <QAbstractScrollArea>
#include <QString>
#include <vector>

#include "SIMULATOR_ZUC/time_control.h"
#include "engine/signal_names.h"

namespace kiva {

/// The signals over time: a row a signal, a column an instant. Only what is seen is looked up and
/// drawn. A click chooses the instant, and the signal of its row; with Shift it sets the second
/// cursor. Up and Down choose the signal beside, Shift+Left and Shift+Right move the second cursor.
class WaveView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit WaveView(TimeControl* time, QWidget* parent = nullptr);

  /// One signal's row, or a title that groups those below it.
  struct Row {
    bool title;
    SignalPlace place;
    QString name;
    bool made;  ///< by the compiler
  };
  const std::vector<Row>& rows() const { return rows_; }
  /// The chosen row; -1 for none.
  int chosen() const { return chosen_; }
  void choose(int row);
  /// Chooses that signal; what the compiler made shows for it.
  void choose_place(SignalPlace signal);
  /// The next row whose name holds the text, behind the chosen one; false where there is none.
  bool find(const QString& text);
  void show_made(bool shown);
  /// Rows of locals: all others are the compiler's.
  void set_declared(const std::vector<size_t>& rows);
  bool shows_made() const { return shows_made_; }
  /// Moves a row among those of its group, by so many places.
  void move_chosen(int places);
  /// Pixels an instant, from 1 to 96.
  void zoom(double factor);
  int column_width() const { return column_; }
  /// To the next instant, or the one before, in which the chosen signal changes; false without.
  bool next_change(int direction);
  /// Where that instant of that row is drawn, in the viewport; for tests and pictures.
  QRect cell(int row, long instant) const;
  /// The second cursor; -1 for none.
  long second_cursor() const { return second_; }
  /// Of the branch that is shown.
  std::vector<std::pair<long, QString>> marks() const;
  void look_changed();

 Q_SIGNALS:
  void chosen_changed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  void make_rows();
  void follow();
  void follow_chosen();
  void tell_shown();
  static QString told(const Row& row, long instant, SignalState state, const QString& value);
  void choose_beside(int direction);
  void move_second(int direction);
  void fit_bars();
  long shown_last() const;
  long instant_at(int x) const;
  int x_of(long instant) const;
  int row_at(int y) const;
  int ruler_height() const;
  void paint_ruler(QPainter& painter, long from, long to);
  void paint_row(QPainter& painter, int row, int y, long from, long to);
  void paint_state(QPainter& painter, QRect cell, SignalState state, bool rises) const;
  void paint_name(QPainter& painter, const Row& row, int y, bool chosen);
  void paint_cursor(QPainter& painter, long instant, const QColor& colour);

  TimeControl* time_;
  std::vector<Row> all_;
  std::vector<Row> rows_;
  int chosen_ = -1;
  long second_ = -1;
  int column_ = 32;
  int scale_ = 100;  ///< percent, of `column_`
  int names_width_ = 160;
  bool shows_made_ = false;

  /// What is drawn: states and texts of the visible instants, by instant, then by row.
  struct Seen {
    std::vector<SignalState> states;
    std::vector<QString> texts;
  };
  void look_up(long from, long to);
  std::vector<Seen> seen_;
  long seen_from_ = 0, seen_to_ = -1, seen_version_ = -1;
  size_t seen_rows_ = 0;
};

}  // namespace kiva
