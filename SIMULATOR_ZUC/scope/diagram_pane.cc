#include "SIMULATOR_ZUC/scope/diagram_pane.h"
#include "engine/map_notes.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFile>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <nlohmann/json.hpp>

#include "tarn/zu/map_file.h"

namespace kiva {

namespace {
/// More registers than that are no picture.
constexpr size_t most_registers = 8;
constexpr double least_readable = 0.7;
}  // namespace

DiagramPane::DiagramPane(TimeControl* time, const QString& module_file, QWidget* parent)
    : QWidget(parent),
      time_(time),
      choice_(new QComboBox),
      area_(new QScrollArea),
      view_(new DiagramView) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  choice_->setAccessibleName(tr("Automaton that is shown"));
  choice_->view()->setAccessibleName(tr("Automata"));
  choice_->setFocusPolicy(Qt::TabFocus);
  layout->addWidget(choice_);
  area_->setWidget(view_);
  area_->setAlignment(Qt::AlignCenter);
  area_->setFrameShape(QFrame::NoFrame);
  area_->setAccessibleName(tr("Automaton"));
  layout->addWidget(area_, 1);
  load(module_file);
  for (const Diagram& diagram : diagrams_) choice_->addItem(QString::fromStdString(diagram.title));
  choice_->setVisible(diagrams_.size() > 1);
  connect(choice_, qOverload<int>(&QComboBox::currentIndexChanged), this, &DiagramPane::choose);
  connect(time_, &TimeControl::moved, this, &DiagramPane::refresh);
  if (!empty()) choose(0);
}

void DiagramPane::load(const QString& module_file) {
  std::string map;
  if (!module_file.isEmpty()) map = map_beside(QFile::encodeName(module_file).toStdString()).text;
  if (!map.empty()) try {
      diagrams_ = automata_of_map(map);
    } catch (const nlohmann::json::exception&) {
      // The source pane says that it is no map.
    }
  Module* module = time_->recording().simulation().module();
  const size_t registers = module->getRegisterList().size();
  if (diagrams_.empty() && registers > 0 && registers <= most_registers)
    diagrams_.push_back(registers_diagram(module, register_names(module, map)));
}

void DiagramPane::choose(int number) {
  const Diagram& diagram = diagrams_[static_cast<size_t>(number)];
  lights_ = std::make_unique<DiagramLights>(diagram, time_->recording().simulation());
  view_->show_diagram(&diagram);
  fit();
  refresh();
}

/// A drawing that is wider than its pane begins small enough to be seen whole, if it can be read
/// so.
void DiagramPane::fit() {
  const double room = area_->viewport()->width(), own = view_->width() / view_->scale();
  if (fitted_ && own > 0 && room > 0)
    view_->zoom(std::clamp(room / own, least_readable, 1.0) / view_->scale());
}

void DiagramPane::zoom(double factor) {
  fitted_ = false;
  view_->zoom(factor);
}

void DiagramPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  QTimer::singleShot(0, this, &DiagramPane::fit);  // the area below gets its size first
}

void DiagramPane::look_changed() {
  view_->zoom(1);
}

void DiagramPane::refresh() {
  if (lights_ == nullptr || time_->busy()) return;
  Recording& recording = time_->recording();
  const Recording::Position here = recording.position();
  if (here.instant <= recording.first_instant()) return view_->light({});
  const SimulationState state = recording.state_at(here);
  if (here.instant == recording.first_instant() + 1) return view_->light(lights_->at(state));
  const SimulationState before = recording.state_at({here.branch, here.instant - 1});
  view_->light(lights_->at(state, &before));
}

}  // namespace kiva
