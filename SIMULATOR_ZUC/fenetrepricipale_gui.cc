// What the window is built of: docks, tool buttons, texts and connections.

#include <QCheckBox>
#include <QDockWidget>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QResizeEvent>
#include <QTimer>
#include <QToolButton>
#include <algorithm>

#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "SIMULATOR_ZUC/panels/panel_table.h"
#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/scope/time_line.h"
#include "SIMULATOR_ZUC/window_look.h"

namespace kiva {

namespace {

void set_text_colour(QWidget* widget, const QColor& color) {
  QPalette palette = widget->palette();
  palette.setColor(QPalette::WindowText, color);
  widget->setPalette(palette);
}

/// A wave that goes high, low, and high.
QIcon wave_icon() {
  QPixmap picture(160, 160);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.scale(2, 2);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(0x8f, 0xbc, 0xff), 6, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
  painter.drawPolyline(
      QPolygon({{6, 56}, {22, 56}, {22, 22}, {44, 22}, {44, 56}, {60, 56}, {60, 22}, {74, 22}}));
  painter.setPen(QPen(QColor(0xf0, 0x9a, 0x45), 4));
  painter.drawLine(52, 10, 52, 70);
  return QIcon(picture);
}

/// The toolkit shrinks the pictures of an icon, and never enlarges them.
QIcon scalable_icon(const char* file) {
  const QPixmap picture(file);
  QIcon icon(picture);
  icon.addPixmap(picture.scaled(picture.size() * 3, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  return icon;
}

}  // namespace

void FenPrincipale::create_gui() {
  // Takes no room beside the docks, whichever of them are closed.
  centralwidget->setMaximumWidth(0);
  QMainWindow::menuBar()
      ->hide();  // it has no menus, and would leave a bright strip over the banner
  create_docks();
  create_tool_buttons();
  setWindowIcon(wave_icon());
  set_text_colour(debugger_panel->one, Qt::blue);
  set_text_colour(debugger_panel->zero, Qt::yellow);
  set_text_colour(debugger_panel->bottom, Qt::black);
  set_text_colour(debugger_panel->top, Qt::green);
  connect_all();
  create_panels_menu();
  create_keys();
  order_focus();
}

void FenPrincipale::create_dock(const PanelRow& row) {
  auto* dock = new QDockWidget(this);
  dock->setObjectName(row.object_name);
  QDockWidget* const first_parent = row.title_parent < 0 ? dock : docks_[row.title_parent];
  titles_.push_back(new TitleBar(first_parent));
  titles_.back()->setTitleText(tr(row.title));
  dock->setWindowTitle(titles_.back()->titleText());
  dock->setTitleBarWidget(titles_.back());
  dock->setWidget(row.make(*this));
  dock->setAllowedAreas(row.allowed);
  if (row.minimum.width() > 0) dock->setMinimumWidth(row.minimum.width());
  if (row.maximum.width() > 0) dock->setMaximumWidth(row.maximum.width());
  if (row.maximum.height() > 0) dock->setMaximumHeight(row.maximum.height());
  addDockWidget(row.area, dock);
  if (row.beside >= 0) splitDockWidget(docks_[row.beside], dock, Qt::Horizontal);
  docks_.push_back(dock);
}

void FenPrincipale::create_docks() {
  auto* banner = new QDockWidget(this);
  banner->setObjectName("header");
  banner->setWindowTitle(tr("Commands"));  // not shown; for screen readers
  header = new Header;
  banner->setTitleBarWidget(new QWidget);
  banner->setWidget(header);
  banner->setFloating(false);
  addDockWidget(Qt::TopDockWidgetArea, banner);

  for (const PanelRow& row : panel_table()) create_dock(row);
  dock0 = docks_[0], dock1 = docks_[1], dock2 = docks_[2];
  dock3 = docks_[3], dock4 = docks_[4], dock5 = docks_[5];
  title0 = titles_[0], title1 = titles_[1], title2 = titles_[2];
  title3 = titles_[3], title4 = titles_[4], title5 = titles_[5];
}

QToolButton* FenPrincipale::create_tool_button(const char* icon, const QString& tip, QPoint at) {
  auto* button = new QToolButton(header);
  if (*icon != 0) button->setIcon(scalable_icon(icon));
  button->setIconSize(QSize(40, 40));
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setToolTip(tip);
  button->setStatusTip(tip);
  button->setProperty("kind", "toolbar");
  button->move(at);
  return button;
}

void FenPrincipale::create_tool_buttons() {
  go = create_tool_button(":/img/go.png", tr("Go"), QPoint(40, 10));
  set = create_tool_button(":/img/init.png", tr("Set"), QPoint(100, 10));
  reset = create_tool_button(":/img/init.png", tr("Reset"), QPoint(200, 10));
  config = create_tool_button(":/img/preferences.png", tr("Configure Personal finances"),
                              QPoint(300, 10));
  help = create_tool_button(":/img/help.png", tr("Show about dialog"), QPoint(400, 10));
  scope_button =
      create_tool_button("", tr("The run over time: waves, branches, why (F9)"), QPoint(870, 10));
  scope_button->setIcon(wave_icon());
}

void FenPrincipale::load_data_ui() {
  go->setText(tr("Go"));
  set->setText(tr("Set"));
  reset->setText(tr("Init"));
  config->setText(tr("Preferences"));
  help->setText(tr("Help"));
  scope_button->setText(tr("Scope"));
  if (pautom != nullptr) {
    title0->hide();
    file_panel->hide();
    dock0->hide();
    inputs_panel->tableWidget->setFocus();
  } else {
    file_panel->pushButton_3->setFocus();
  }
  nb_inputs = nb_outputs = nb_regs = nb_locals = 0;
}

void FenPrincipale::connect_all() {
  connect(file_panel->pushButton_3, SIGNAL(clicked()), this, SLOT(afficherAll()));
  connect(file_panel->pushButton_2, SIGNAL(clicked()), this, SLOT(afficher_ZU()));
  connect(debugger_panel->one, SIGNAL(toggled(bool)), this, SLOT(set_ColorBleu(bool)));
  connect(debugger_panel->zero, SIGNAL(toggled(bool)), this, SLOT(set_ColorJaune(bool)));
  connect(debugger_panel->bottom, SIGNAL(toggled(bool)), this, SLOT(set_ColorNoir(bool)));
  connect(debugger_panel->top, SIGNAL(toggled(bool)), this, SLOT(set_ColorVert(bool)));
  connect(debugger_panel->set, SIGNAL(toggled(bool)), this, SLOT(set_checked(bool)));
  connect(debugger_panel->reset, SIGNAL(toggled(bool)), this, SLOT(reset_checked(bool)));
  QTableWidget* inputs = inputs_panel->tableWidget;
  connect(inputs, SIGNAL(clicked(const QModelIndex&)), this, SLOT(Set_ListColor(QModelIndex)));
  connect(inputs, SIGNAL(activated(const QModelIndex&)), this, SLOT(Set_ListColor(QModelIndex)));
  connect(inputs, &QTableWidget::cellDoubleClicked, this, [this](int row, int column) {
    if (column == 0) step_row(row);
  });
  connect(inputs->verticalHeader(), &QHeaderView::sectionClicked, this, &FenPrincipale::choose_row);
  connect(go, SIGNAL(clicked()), this, SLOT(Simuler()));
  connect(reset, SIGNAL(clicked()), this, SLOT(Initialise()));
  connect(set, SIGNAL(clicked()), this, SLOT(raise_set()));
  connect(config, SIGNAL(clicked()), this, SLOT(show_panels_menu()));
  connect(help, SIGNAL(clicked()), this, SLOT(show_help()));
  connect(scope_button, SIGNAL(clicked()), this, SLOT(show_scope()));
}

void FenPrincipale::create_panels_menu() {
  panels_menu = new QMenu(tr("Panels"), this);
  panels_menu->setAccessibleName(tr("Panels"));
  // The title of a dock becomes the text of its entry.
  for (QDockWidget* dock : docks()) panels_menu->addAction(dock->toggleViewAction());
  panels_menu->addSeparator();
  QAction* open = panels_menu->addAction(tr("Open..."), this, &FenPrincipale::ask_open);
  open->setShortcut(QKeySequence("Ctrl+O"));
  addAction(open);  // its key works while the menu is closed
  recent_menu = panels_menu->addMenu(tr("Recent files"));
  create_look_menu();
  setAcceptDrops(true);
  // A module from the command line has hidden these two inside their dock. They come back before
  // it, for it takes its height from them.
  connect(dock0->toggleViewAction(), &QAction::toggled, this, [this](bool shown) {
    if (!shown) return;
    title0->show();
    file_panel->show();
  });
  for (QDockWidget* dock : docks())
    connect(dock->toggleViewAction(), &QAction::triggered, this,
            [this] { QTimer::singleShot(0, this, &FenPrincipale::share_height); });
}

void FenPrincipale::show_panels_menu() {
  fill_recent_menu();
  panels_menu->popup(config->mapToGlobal(QPoint(0, config->height())));
}

void FenPrincipale::fit_tool_buttons() {
  for (QToolButton* button : {go, set, reset, config, help, scope_button}) {
    button->adjustSize();
    button->move(std::min(button->x(), width() - button->width()), button->y());
  }
}

// Left alone, the layout takes from the Load dock what all rows together lack, and cuts its second
// line off. The Debugger dock can spare it.
void FenPrincipale::share_height() {
  const WindowLook& look = WindowLook::current();
  // What a small screen lacks the Debugger gives first, then the lists.
  const int lack = look.px(680) - height();
  const int below = std::max(look.px(105), look.px(153) - lack);
  const int lists = std::max(look.px(105), look.px(310) - (lack - (look.px(153) - below)));
  resizeDocks({dock0, dock1, dock5}, {look.px(120), lists, lack > 0 ? below : look.px(180)},
              Qt::Vertical);
  if (lack <= 0 && dock0->isVisible()) resizeDocks({dock5}, {below}, Qt::Vertical);
}

bool FenPrincipale::event(QEvent* event) {
  const bool handled = QMainWindow::event(event);
  // The style sheet decides how wide the texts are.
  if ((event->type() == QEvent::StyleChange || event->type() == QEvent::Show) && help != nullptr)
    fit_tool_buttons();
  if (event->type() == QEvent::Show) share_height();
  return handled;
}

/// Which instant of what is shown; empty without a module.
QString FenPrincipale::time_line() const {
  if (time_ == nullptr) return {};
  if (time_->busy()) return tr("running: instant %1").arg(time_->progress());
  const Recording& recording = time_->recording();
  const Recording::Position here = recording.position();
  const QString module = QString::fromStdString(pautom->getName());
  const QString instant = tr("%1: instant %2 of %3")
                              .arg(module)
                              .arg(here.instant)
                              .arg(recording.branch(here.branch).last);
  return recording.branches() == 1
             ? instant
             : tr("%1, branch %2").arg(instant, TimeLine::branch_name(recording, here.branch));
}

// Where the docks leave a band free, it says what the colours mean.
void FenPrincipale::paintEvent(QPaintEvent* event) {
  QMainWindow::paintEvent(event);
  const bool closed_below = dock5->isVisible() && !dock5->isFloating();
  const int bottom = closed_below ? dock5->y() : height();
  int top = header->height();
  for (const QDockWidget* dock : {dock0, dock1, dock2, dock3, dock4})
    if (dock->isVisible() && !dock->isFloating()) top = std::max(top, dock->geometry().bottom());
  const WindowLook& look = WindowLook::current();
  const int chip_width = look.px(84), chip_height = look.px(22), gap = look.px(10);
  if (bottom - top < 2 * chip_height) return;
  const SignalState states[] = {SignalState::one, SignalState::zero, SignalState::top,
                                SignalState::bottom, SignalState::unknown};
  const int count = static_cast<int>(std::size(states));
  QRect chip((width() - count * chip_width - (count - 1) * gap) / 2,
             (top + bottom - chip_height) / 2, chip_width, chip_height);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  for (SignalState state : states) {
    painter.setPen(QColor(0x8b, 0x8b, 0x8b));
    painter.setBrush(background_of(state));
    painter.drawRoundedRect(chip, 5, 5);
    painter.setPen(text_colour_on(background_of(state)));
    painter.drawText(chip, Qt::AlignCenter, label_of(state));
    chip.translate(chip_width + gap, 0);
  }
  painter.setPen(look.dark() ? Qt::white : Qt::black);
  painter.drawText(QRect(0, chip.bottom() + 4, width(), chip_height), Qt::AlignCenter, time_line());
}

void FenPrincipale::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  fit_docks();
}

void FenPrincipale::fit_docks() {
  // A dock wider than the window would have its close button cut off.
  const std::span<const PanelRow> rows = panel_table();
  for (size_t number = 0; number < rows.size(); ++number)
    if (const int wanted = rows[number].minimum.width(); wanted > 0)
      docks_[number]->setMinimumWidth(std::min(WindowLook::current().px(wanted), width()));
}

}  // namespace kiva
