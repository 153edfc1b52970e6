#pragma once

#include <QStatusBar>
#include <atomic>
#include <mutex>

#include "base/connection.h"

class QLabel;
class QToolButton;

namespace kiva {

/// The evaluation server of the window: a connection, and the line that shows how it stands. It
/// answers the requests of the current session while it lives, from whichever thread they come. The
/// window lives on while the server is waited for.
class ServerLine : public QStatusBar {
  Q_OBJECT

 public:
  ServerLine(QWidget* parent, const std::string& host, unsigned short port);
  ~ServerLine() override;

  Connection& connection() { return connection_; }
  /// Connects, by a loop of events of its own until that is decided; false where it failed, which
  /// the line shows.
  bool open();
  /// Ends the wait under way, if there is one.
  void cancel();
  void show_state();

 Q_SIGNALS:
  /// The server has left between two instants, or has said `unasked` what nobody asked for.
  void lost(QString reason, bool unasked);
  /// There is a connection, or there is none any more.
  void changed();

 private:
  /// The connection, for one at a time; an earlier cancellation does not count.
  std::unique_lock<std::mutex> alone();
  Connection::Ready wait(int descriptor, short events, Connection::Milliseconds most);
  void look();

  Connection connection_;
  std::mutex mutex_;
  int cancelled_;  ///< an eventfd
  std::atomic<bool> opening_ = false;
  QString fault_;
  QLabel* text_;
  QToolButton* cancel_;
  QToolButton* reconnect_;
};

}  // namespace kiva
