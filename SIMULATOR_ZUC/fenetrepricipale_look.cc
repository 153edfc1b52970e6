// The window at the scale and in the colours of WindowLook. Told sizes are kept beside the widgets
// that have them, so that every scale is made from them and scale 1 is as told.

#include <QAbstractItemView>
#include <QApplication>
#include <QDockWidget>
#include <QHeaderView>
#include <QMenu>
#include <QTableWidget>
#include <QToolButton>

#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "SIMULATOR_ZUC/panels/panel_table.h"
#include "SIMULATOR_ZUC/window_look.h"

namespace kiva {

namespace {

constexpr QSize told_size(945, 680);
constexpr int text_height = 13;  // pixels
constexpr QSize told_icon(40, 40);

/// The value under that name, kept there when it is first asked for.
template <class T>
T told(QWidget* widget, const char* name, const T& now) {
  const QVariant kept = widget->property(name);
  if (kept.isValid()) return kept.value<T>();
  widget->setProperty(name, QVariant::fromValue(now));
  return now;
}

QSize scaled(const QSize& size) {
  const WindowLook& look = WindowLook::current();
  return {look.px(size.width()), look.px(size.height())};
}

/// Of a panel: what has a place or a least size of its own.
void scale_children(QWidget* panel) {
  for (QWidget* child : panel->findChildren<QWidget*>()) {
    const QSize least = told(child, "told_least", child->minimumSize());
    if (!least.isEmpty() || least.width() > 0) child->setMinimumSize(scaled(least));
    const QWidget* parent = child->parentWidget();
    const bool placed = parent->layout() == nullptr && child->layout() != nullptr &&
                        (parent == panel || parent->inherits("QGroupBox"));
    if (!placed) continue;
    const QRect place = told(child, "told_place", child->geometry());
    child->setGeometry(
        QRect(QPoint(WindowLook::current().px(place.x()), WindowLook::current().px(place.y())),
              scaled(place.size())));
  }
  for (QTableWidget* table : panel->findChildren<QTableWidget*>()) {
    QHeaderView* rows = table->verticalHeader();
    const int height = told(rows, "told_section", rows->defaultSectionSize());
    rows->setDefaultSectionSize(WindowLook::current().px(height));
  }
}

}  // namespace

void FenPrincipale::dress() {
  const WindowLook& look = WindowLook::current();
  // The docks' own limits come first: they bound what the window can be.
  const std::span<const PanelRow> rows = panel_table();
  for (size_t number = 0; number < rows.size(); ++number) {
    QDockWidget* dock = docks_[number];
    const QSize largest = rows[number].maximum;
    if (largest.width() > 0) dock->setMaximumWidth(look.px(largest.width()));
    if (largest.height() > 0) dock->setMaximumHeight(look.px(largest.height()));
    titles_[number]->look_changed();
    scale_children(dock->widget());
  }
  header->look_changed();
  for (QToolButton* button : {go, set, reset, config, help, scope_button}) {
    const QPoint place = told(button, "told_at", button->pos());
    button->move(look.px(place.x()), look.px(place.y()));
    button->setIconSize(scaled(told_icon));
  }
  // On a smaller screen no part lies beyond its edges: the panels have scroll bars.
  setFixedSize(scaled(told_size).boundedTo(look.room().expandedTo(told_size)));
  fit_docks();
  QFont font = QApplication::font();
  font.setPixelSize(look.px(text_height));
  QApplication::setFont(font);
  setStyleSheet(look.style_sheet());
  fit_tool_buttons();
  share_height();
  if (simulation_ != nullptr) show_instant();
  update();
}

void FenPrincipale::create_look_menu() {
  WindowLook& look = WindowLook::current();
  panels_menu->addSeparator();
  const auto add = [this](const QString& text, const QList<QKeySequence>& keys,
                          const std::function<void()>& act) {
    QAction* action = panels_menu->addAction(text, this, act);
    action->setShortcuts(keys);
    addAction(action);  // its key works while the menu is closed
    return action;
  };
  add(tr("Larger"), {QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")}, [&look] { look.larger(); });
  add(tr("Smaller"), {QKeySequence("Ctrl+-")}, [&look] { look.smaller(); });
  add(tr("Told size"), {QKeySequence("Ctrl+0")}, [&look] { look.set_scale(1); });
  QAction* dark = add(tr("Dark"), {}, [] {});
  QAction* safe = add(tr("Colours without red and green"), {}, [] {});
  dark->setCheckable(true);
  safe->setCheckable(true);
  connect(dark, &QAction::toggled, this, [&look](bool on) { look.set_dark(on); });
  connect(safe, &QAction::toggled, this, [&look](bool on) { look.set_safe_colours(on); });
  const auto show = [&look, dark, safe] {
    dark->setChecked(look.dark());
    safe->setChecked(look.safe_colours());
  };
  connect(&look, &WindowLook::changed, dark, show);
  show();
}

}  // namespace kiva
