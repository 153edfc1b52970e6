// Requests are made in the worker that runs an instant, and the connection in a thread of its own:
// the loop of events never waits for a server. A timer looks at the connection's state.

#include "SIMULATOR_ZUC/server_line.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QEventLoop>
#include <QLabel>
#include <QTimer>
#include <QToolButton>
#include <thread>

#include "base/translation.h"
#include "tarn/model/evaluation_service.h"
#include "tarn/session/session.h"

namespace kiva {

namespace {

constexpr Connection::Milliseconds time_out(5000);
constexpr int look_every = 100;  // ms

}  // namespace

ServerLine::ServerLine(QWidget* parent, const std::string& host, unsigned short port)
    : QStatusBar(parent),
      connection_(host, port, time_out),
      cancelled_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      text_(new QLabel(this)),
      cancel_(new QToolButton(this)),
      reconnect_(new QToolButton(this)) {
  setObjectName("server_line");
  setSizeGripEnabled(false);
  text_->setTextFormat(Qt::PlainText);
  text_->setAccessibleName(tr("State of the evaluation server"));
  cancel_->setText(tr("Cancel"));
  reconnect_->setText(tr("Reconnect"));
  addPermanentWidget(text_, 1);
  addPermanentWidget(cancel_);
  addPermanentWidget(reconnect_);
  connect(cancel_, &QToolButton::clicked, this, &ServerLine::cancel);
  connect(reconnect_, &QToolButton::clicked, this, [this] { open(); });
  connection_.set_wait([this](int descriptor, short events, Connection::Milliseconds most) {
    return wait(descriptor, events, most);
  });
  auto& service = Session::current().part<EvaluationService>();
  service.name = connection_.name();
  service.ask = [this](const std::string& request) {
    const auto lock = alone();
    try {
      return connection_.ask(request);
    } catch (const ConnectionFault& fault) {
      const QString reason = QString::fromStdString(translated(fault.what()));
      QMetaObject::invokeMethod(
          this, [this, reason] { fault_ = reason; }, Qt::QueuedConnection);
      throw;
    }
  };
  auto* timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, &ServerLine::look);
  timer->start(look_every);
  show_state();
}

ServerLine::~ServerLine() {
  cancel();
  Session::current().part<EvaluationService>().ask = nullptr;
  ::close(cancelled_);
}

void ServerLine::cancel() {
  if (connection_.state() == Connection::State::waiting) eventfd_write(cancelled_, 1);
}

std::unique_lock<std::mutex> ServerLine::alone() {
  std::unique_lock lock(mutex_);
  eventfd_t taken = 0;
  static_cast<void>(eventfd_read(cancelled_, &taken));
  return lock;
}

Connection::Ready ServerLine::wait(int descriptor, short events, Connection::Milliseconds most) {
  pollfd both[] = {{descriptor, events, 0}, {cancelled_, POLLIN, 0}};
  const int count = poll(both, 2, static_cast<int>(most.count()));
  eventfd_t taken = 0;
  if (both[1].revents != 0 && eventfd_read(cancelled_, &taken) == 0)
    return Connection::Ready::cancelled;
  return count > 0 ? Connection::Ready::yes : Connection::Ready::late;
}

bool ServerLine::open() {
  if (opening_.exchange(true) || connection_.state() == Connection::State::waiting) return false;
  QEventLoop loop;
  std::string fault;
  std::thread opener([&] {
    const auto lock = alone();
    try {
      connection_.open();
    } catch (const ConnectionFault& thrown) {
      fault = thrown.what();
    }
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
  });
  show_state();
  loop.exec();
  // The program may end meanwhile.
  cancel();
  opener.join();
  opening_ = false;
  fault_ = QString::fromStdString(fault);
  show_state();
  Q_EMIT changed();
  return fault.empty();
}

void ServerLine::look() {
  std::unique_lock lock(mutex_, std::try_to_lock);
  if (lock && connection_.state() == Connection::State::connected) {
    bool unasked = true;
    try {
      connection_.check_silent();
      unasked = false;
      connection_.check_there();
    } catch (const ConnectionFault& fault) {
      lock.unlock();
      fault_ = QString::fromStdString(translated(fault.what()));
      Q_EMIT changed();
      Q_EMIT lost(fault_, unasked);
    }
  }
  show_state();
}

void ServerLine::show_state() {
  using enum Connection::State;
  const Connection::State state = connection_.state();
  const QString name = QString::fromStdString(connection_.name());
  const QString text = state == connected ? tr("Server %1: connected").arg(name)
                       : state == waiting ? tr("Server %1: waiting").arg(name)
                       : fault_.isEmpty() ? tr("Server %1: lost").arg(name)
                                          : tr("Lost: %1").arg(fault_);
  if (text_->text() != text) text_->setText(text);
  cancel_->setEnabled(state == waiting);
  reconnect_->setEnabled(state != waiting && !opening_);
}

}  // namespace kiva
