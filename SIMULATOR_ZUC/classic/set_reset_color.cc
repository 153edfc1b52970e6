#include "SIMULATOR_ZUC/classic/set_reset_color.h"

#include <QCheckBox>

namespace kiva {

namespace {

void highlight(QCheckBox* box, const QColor& color) {
  QPalette palette = box->palette();
  palette.setColor(QPalette::Highlight, color);
  box->setPalette(palette);
}

}  // namespace

void Set_Reset_Color::Set_bleu(QCheckBox* box) {
  m_bleu = true;
  m_jaune = false;
  highlight(box, Qt::blue);
}

void Set_Reset_Color::Set_jaune(QCheckBox* box) {
  m_bleu = false;
  m_jaune = true;
  highlight(box, Qt::yellow);
}

void Set_Reset_Color::set_vert(QCheckBox* first, QCheckBox* second) {
  m_bleu = m_jaune = true;
  highlight(first, Qt::green);
  highlight(second, Qt::green);
}

std::string Set_Reset_Color::Get_Set_Reset_color() const {
  // Both together are green.
  if (m_bleu && !m_jaune) return "bleu";
  if (m_jaune && !m_bleu) return "jaune";
  return "vert";
}

}  // namespace kiva
