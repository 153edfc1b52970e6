#pragma once

#include <string>

class QCheckBox;

namespace kiva {

/// The two flags as colours of their check boxes.
class Set_Reset_Color {
 public:
  void Set_bleu(QCheckBox* box);
  void Set_jaune(QCheckBox* box);
  void set_vert(QCheckBox* first, QCheckBox* second);
  /// "bleu", "jaune" or else "vert".
  std::string Get_Set_Reset_color() const;
  void initialise_set_reset() { m_bleu = m_jaune = false; }

 private:
  bool m_bleu = false;
  bool m_jaune = false;
};

}  // namespace kiva
