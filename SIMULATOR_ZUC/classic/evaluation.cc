#include "SIMULATOR_ZUC/classic/evaluation.h"

#include <QListWidget>
#include <QTableWidget>
#include <iostream>

#include "SIMULATOR_ZUC/row_state.h"
#include "base/process_end.h"
#include "tarn/session/session.h"

namespace kiva {

void tell_evaluation(Module* module) {
  told_text() << "i'm in bdds_evaluate()\n";
  Bddexpressionwood* wood = module->getBddWood();
  for (long index : wood->earliest_sort())
    if (wood->Exp_table()[index]->getAbstraction() != 0) told_text() << " getAbstraction() \n";
}

int* Signal_eval::Get_contexts(Module* module, set_reset* flags, List_Signal_color* colors,
                               int* context) {
  if (module == nullptr) {
    std::cerr << "***error:Signal_eval: No module loaded\n";
    end_process();
  }
  write_choices(choice_rails(module), flags->get_Set(), flags->get_Reset(), colors->chosen_states(),
                context);
  return context;
}

int* Signal_eval::bdds_evaluate(Module* module, int* context) {
  mananger = module->getBddWood()->my_bdd_manager();
  tell_evaluation(module);
  Simulation(module).run_equations(context);
  return context;
}

std::vector<SignalState> Signal_eval::states_of(Module* module, const int* context,
                                                const std::string* names, int n) {
  mananger = module->getBddWood()->my_bdd_manager();
  std::vector<SignalState> states;
  for (int row = 0; row < n; ++row) {
    long status_index, value_index;
    get_id_signals(module, names[row], status_index, value_index);
    states.push_back(state_of(context[status_index], context[value_index]));
  }
  return states;
}

void Signal_eval::context_evaluate_color(QListWidget* list, Module* module, const int* context,
                                         const std::string* names, int n) {
  paint_states(list, states_of(module, context, names, n));
}

void Signal_eval::context_evaluate_color_outputs(QTableWidget* table, Module* module,
                                                 const int* context, const std::string* names,
                                                 int n) {
  paint_states(table, states_of(module, context, names, n));
}

void Signal_eval::bdds_evaluate_color(QTableWidget* table, Module* module, const int* context,
                                      const std::string* names, int n) {
  const std::vector<SignalState> states = states_of(module, context, names, n);
  signals_color.assign(states.size(), Signal_color());
  QAbstractItemModel* model = table->model();
  for (int row = 0; row < n; ++row) {
    const QModelIndex index = model->index(row, 0);
    const auto select = [&](const QModelIndex& at) {
      table->selectionModel()->setCurrentIndex(at, QItemSelectionModel::Select);
    };
    if (states[row] != SignalState::bottom) select(index);
    switch (states[row]) {
      case SignalState::bottom:
        model->setData(index, QBrush(Qt::white), Qt::ForegroundRole);
        break;
      case SignalState::zero:
        model->setData(index, QBrush(Qt::yellow), Qt::BackgroundRole);
        break;
      case SignalState::top:
        signals_color[row].Set_vert(table, names, row);
        select(model->index(0, 0));
        break;
      case SignalState::one:
        model->setData(index, QBrush(Qt::blue), Qt::ForegroundRole);
        break;
      case SignalState::unknown:
        model->setData(index, QBrush(Qt::red), Qt::ForegroundRole);
        break;
    }
  }
}

}  // namespace kiva
