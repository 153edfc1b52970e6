#include "SIMULATOR_ZUC/scope/module_label.h"

#include <QPainter>

#include "SIMULATOR_ZUC/scope/scope_look.h"

namespace kiva {

void ModuleLabel::set_names(const QString& module, const QString& file) {
  module_ = module;
  file_ = ' ' + file;
  setAccessibleDescription(module + file_);
  setToolTip(module + file_);
  updateGeometry();
  update();
}

QFont ModuleLabel::bold() const {
  QFont bold = font();
  bold.setBold(true);
  return bold;
}

QSize ModuleLabel::sizeHint() const {
  const QFontMetrics name(bold());
  return {name.horizontalAdvance(module_) + fontMetrics().horizontalAdvance(file_) + 2,
          name.height()};
}

QSize ModuleLabel::minimumSizeHint() const {
  const QFontMetrics name(bold());
  return {std::min(name.horizontalAdvance(module_), 8 * name.averageCharWidth()), name.height()};
}

void ModuleLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setFont(bold());
  painter.setPen(ScopeLook::current().text);
  const QFontMetrics name(bold());
  const QString module = name.elidedText(module_, Qt::ElideMiddle, width());
  painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft, module);
  const QRect rest = rect().adjusted(name.horizontalAdvance(module_), 0, 0, 0);
  painter.setFont(font());
  painter.setPen(ScopeLook::current().faint);
  if (fontMetrics().horizontalAdvance(file_) <= rest.width())
    painter.drawText(rest, Qt::AlignVCenter | Qt::AlignLeft, file_);
}

}  // namespace kiva
