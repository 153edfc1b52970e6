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
#include "SIMULATOR_ZUC/row_state.h"

namespace kiva {

namespace {

constexpr int kFullWidth = 950;  // of the Load and Debugger docks, where the window allows it

void set_text_colour(QWidget* widget, const QColor& color) {
  QPalette palette = widget->palette();
  palette.setColor(QPalette::WindowText, color);
  widget->setPalette(palette);
}

}  // namespace

void FenPrincipale::create_gui() {
  // Takes no room beside the docks, whichever of them are closed.
  centralwidget->setMaximumWidth(0);
  QMainWindow::menuBar()
      ->hide();  // it has no menus, and would leave a bright strip over the banner
  create_docks();
  create_tool_buttons();
  set_text_colour(debugger_panel->one, Qt::blue);
  set_text_colour(debugger_panel->zero, Qt::yellow);
  set_text_colour(debugger_panel->bottom, Qt::black);
  set_text_colour(debugger_panel->top, Qt::green);
  connect_all();
  create_panels_menu();
  create_keys();
  order_focus();
}

QDockWidget* FenPrincipale::create_dock(const char* object_name, TitleBar*& title,
                                        QWidget* title_parent, QWidget* panel) {
  auto* dock = new QDockWidget(this);
  dock->setObjectName(object_name);
  title = new TitleBar(title_parent == nullptr ? dock : title_parent);
  dock->setTitleBarWidget(title);
  dock->setWidget(panel);
  return dock;
}

void FenPrincipale::create_docks() {
  auto* banner = new QDockWidget(this);
  banner->setObjectName("header");
  header = new Header;
  banner->setTitleBarWidget(new QWidget);
  banner->setWidget(header);
  banner->setFloating(false);
  addDockWidget(Qt::TopDockWidgetArea, banner);

  inputs_panel = new InputsDialog;
  locals_panel = new LocalsPanel;
  file_panel = new FilePanel;
  register_panel = new RegisterPanel;
  outputs_panel = new OutputsPanel;
  debugger_panel = new DebuggerPanel;
  const auto side = Qt::LeftDockWidgetArea | Qt::BottomDockWidgetArea;

  dock0 = create_dock("Inputs_Dialog", title0, nullptr, file_panel);
  dock0->setAllowedAreas(side);
  dock0->setMinimumWidth(kFullWidth);
  dock0->setMaximumHeight(120);
  addDockWidget(Qt::LeftDockWidgetArea, dock0);

  dock1 = create_dock("Inputs_Dialog", title1, nullptr, inputs_panel);
  dock1->setAllowedAreas(side);
  dock1->setMaximumSize(260, 310);
  addDockWidget(Qt::LeftDockWidgetArea, dock1);

  dock2 = create_dock("Locals_Dialog", title2, nullptr, locals_panel);
  dock2->setAllowedAreas(side);
  dock2->setMaximumSize(200, 310);
  addDockWidget(Qt::LeftDockWidgetArea, dock2);
  splitDockWidget(dock1, dock2, Qt::Horizontal);

  dock3 = create_dock("Locals_Dialog", title3, dock2, register_panel);
  dock3->setAllowedAreas(side);
  dock3->setMaximumSize(200, 310);
  addDockWidget(Qt::LeftDockWidgetArea, dock3);
  splitDockWidget(dock2, dock3, Qt::Horizontal);

  dock4 = create_dock("Outputs_Dialog", title4, nullptr, outputs_panel);
  dock4->setAllowedAreas(side);
  dock4->setMaximumSize(329, 310);
  addDockWidget(Qt::LeftDockWidgetArea, dock4);
  splitDockWidget(dock3, dock4, Qt::Horizontal);

  dock5 = create_dock("Outputs_Dialog", title5, nullptr, debugger_panel);
  dock5->setAllowedAreas(Qt::BottomDockWidgetArea);
  dock5->setMinimumWidth(kFullWidth);
  dock5->setMaximumHeight(180);
  addDockWidget(Qt::BottomDockWidgetArea, dock5);
}

QToolButton* FenPrincipale::create_tool_button(const char* icon, const QString& tip, QPoint at) {
  auto* button = new QToolButton(header);
  button->setIcon(QIcon(icon));
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
}

void FenPrincipale::load_data_ui() {
  title1->setTitleText(tr("Inputs Panel"));
  title0->setTitleText(tr("Load Panel"));
  title2->setTitleText(tr("Locals Panel"));
  title3->setTitleText(tr("Registers Panel"));
  title4->setTitleText(tr("Outputs Panel"));
  title5->setTitleText(tr("Debugger Panel"));
  const std::vector<TitleBar*> titles = title_bars();
  const std::vector<QDockWidget*> all = docks();
  for (size_t number = 0; number < all.size(); ++number)
    all[number]->setWindowTitle(titles[number]->titleText());
  go->setText(tr("Go"));
  set->setText(tr("Set"));
  reset->setText(tr("Init"));
  config->setText(tr("Preferences"));
  help->setText(tr("Help"));
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
  connect(inputs->verticalHeader(), &QHeaderView::sectionClicked, this, &FenPrincipale::choose_row);
  connect(go, SIGNAL(clicked()), this, SLOT(Simuler()));
  connect(reset, SIGNAL(clicked()), this, SLOT(Initialise()));
  connect(set, SIGNAL(clicked()), this, SLOT(raise_set()));
  connect(config, SIGNAL(clicked()), this, SLOT(show_panels_menu()));
  connect(help, SIGNAL(clicked()), this, SLOT(show_help()));
}

void FenPrincipale::create_panels_menu() {
  panels_menu = new QMenu(tr("Panels"), this);
  panels_menu->setAccessibleName(tr("Panels"));
  // The title of a dock becomes the text of its entry.
  for (QDockWidget* dock : docks()) panels_menu->addAction(dock->toggleViewAction());
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
  panels_menu->popup(config->mapToGlobal(QPoint(0, config->height())));
}

void FenPrincipale::fit_tool_buttons() {
  for (QToolButton* button : {go, set, reset, config, help}) button->adjustSize();
}

// Left alone, the layout takes from the Load dock what all rows together lack, and cuts its second
// line off. The Debugger dock can spare it.
void FenPrincipale::share_height() {
  resizeDocks({dock0, dock1, dock5}, {120, 310, 180}, Qt::Vertical);
  if (dock0->isVisible()) resizeDocks({dock5}, {153}, Qt::Vertical);
}

bool FenPrincipale::event(QEvent* event) {
  const bool handled = QMainWindow::event(event);
  // The style sheet decides how wide the texts are.
  if ((event->type() == QEvent::StyleChange || event->type() == QEvent::Show) && help != nullptr)
    fit_tool_buttons();
  if (event->type() == QEvent::Show) share_height();
  return handled;
}

// Where the docks leave a band free, it says what the colours mean.
void FenPrincipale::paintEvent(QPaintEvent* event) {
  QMainWindow::paintEvent(event);
  const bool closed_below = dock5->isVisible() && !dock5->isFloating();
  const int bottom = closed_below ? dock5->y() : height();
  int top = header->height();
  for (const QDockWidget* dock : {dock0, dock1, dock2, dock3, dock4})
    if (dock->isVisible() && !dock->isFloating()) top = std::max(top, dock->geometry().bottom());
  constexpr int chip_width = 84, chip_height = 22, gap = 10;
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
}

void FenPrincipale::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  // A dock wider than the window would have its close button cut off.
  const int width = std::min(kFullWidth, event->size().width());
  dock0->setMinimumWidth(width);
  dock5->setMinimumWidth(width);
}

}  // namespace kiva
