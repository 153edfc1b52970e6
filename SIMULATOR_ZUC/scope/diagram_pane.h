#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "SIMULATOR_ZUC/scope/diagram_view.h"
#include "SIMULATOR_ZUC/time_control.h"

class QComboBox;
class QScrollArea;

namespace kiva {

/// The automata of the module's source text, one at a time, lit as the shown instant is; where the
/// text has none, its registers with what they move to.
class DiagramPane : public QWidget {
  Q_OBJECT

 public:
  /// `module_file` is that of the compiled module, beside which the map of its source lies.
  DiagramPane(TimeControl* time, const QString& module_file, QWidget* parent = nullptr);
  /// The module has nothing that could be drawn and looked at.
  bool empty() const { return diagrams_.empty(); }
  DiagramView* view() const { return view_; }
  QComboBox* choice() const { return choice_; }
  /// Larger or smaller by that factor; from then on the size of the pane does not matter.
  void zoom(double factor);
  void refresh();
  void look_changed();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fit();
  void load(const QString& module_file);
  void choose(int number);

  TimeControl* time_;
  std::vector<Diagram> diagrams_;
  std::unique_ptr<DiagramLights> lights_;  ///< of the one that is shown
  QComboBox* choice_;
  QScrollArea* area_;
  DiagramView* view_;
  bool fitted_ = true;
};

}  // namespace kiva
