#pragma once

#include <string>
#include <vector>

#include "SIMULATOR_ZUC/classic/set_reset_color.h"
#include "engine/simulation.h"

class QCheckBox;
class QModelIndex;
class QTableWidget;

namespace kiva {

class FenPrincipale;

/// The state chosen for one input, as a colour. Of a simulation's row it is the choice itself,
/// which the simulation keeps; alone it is a colour of its own, at first none.
class Signal_color {
 public:
  Signal_color() = default;
  Signal_color(Simulation* simulation, size_t row) : simulation_(simulation), row_(row) {}

  // Each makes its colour the only one and paints (row, 0) of the table; names are not read.
  void Set_bleu(QTableWidget* table, const std::string* names, int row);
  void Set_jaune(QTableWidget* table, const std::string* names, int row);
  void Set_vert(QTableWidget* table, const std::string* names, int row);
  void Set_noir(QTableWidget* table, const std::string* names, int row);
  void Set_rouge(QTableWidget* table, const std::string* names, int row);

  /// "bleu", "jaune", "vert", "noir"; "rouge" when no choice stands.
  std::string Get_Signal_color() const;
  /// The state that the colour stands for; Bottom when no choice stands.
  SignalState chosen_state() const;

  /// Red alone; makes the index current and the table's highlight cyan.
  void Set_jaune_test(QTableWidget* table, const QModelIndex& index);

 private:
  SignalState state() const;
  void become(SignalState state, QTableWidget* table, int row);

  Simulation* simulation_ = nullptr;
  size_t row_ = 0;
  SignalState own_ = SignalState::unknown;  ///< only where there is no simulation
};

/// The choices for all rows of the inputs table, and the row that the next choice goes to.
class List_Signal_color {
 public:
  List_Signal_color() : m_inputs_List_color(1), m_Set_Reset_List_color(1) {}

  /// All n rows become "noir" and selected, the last one current; `m_selected` keeps its value. The
  /// rows are those of the window's simulation, where it has one.
  void List_initializing(int n, FenPrincipale* window, const std::string* names);

  // Each gives the selected row its colour; with none selected it says so and clears the radios.
  void Set_List_color_bleu(FenPrincipale* window, const std::string* names);
  void Set_List_color_jaune(FenPrincipale* window, const std::string* names);
  void Set_List_color_vert(FenPrincipale* window, const std::string* names);
  void Set_List_color_noir(FenPrincipale* window, const std::string* names);

  /// Word of the selected row, which must exist; "rouge because no input selected" where no choice
  /// stands.
  std::string Get_List_Signal_color() const;
  void last_selected(const std::string* names, const QModelIndex& index);
  void last_checked(QCheckBox* first, QCheckBox* second);
  /// -1 for none.
  int selected_row() const { return m_selected; }

  /// One element for each row.
  Signal_color* Get_Table() { return m_inputs_List_color.data(); }
  size_t row_number() const { return m_inputs_List_color.size(); }
  std::vector<SignalState> chosen_states() const;

 private:
  using Painter = void (Signal_color::*)(QTableWidget*, const std::string*, int);
  void set_selected(Painter painter, FenPrincipale* window, const std::string* names);

  std::vector<Signal_color> m_inputs_List_color;
  std::vector<Set_Reset_Color> m_Set_Reset_List_color;
  int m_selected = -1;
  int m_checked = -1;
};

}  // namespace kiva
