#include "SIMULATOR_ZUC/scope/source_pane.h"

#include <QFile>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/scope/scope_look.h"
#include "tarn/zu/map_file.h"

namespace kiva {

SourcePane::SourcePane(TimeControl* time, const QString& module_file, QWidget* parent)
    : QWidget(parent),
      time_(time),
      names_(time->recording().simulation()),
      tabs_(new QTabWidget),
      note_(new QLabel),
      legend_(new QLabel),
      line_(new QLabel) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  for (QLabel* label : {note_, legend_, line_}) label->setWordWrap(true);
  note_->setAccessibleName(tr("About the source"));
  legend_->setAccessibleName(tr("What the colours and signs mean"));
  line_->setAccessibleName(tr("Signals of the line"));
  line_->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  layout->addWidget(legend_);
  layout->addWidget(tabs_, 1);
  layout->addWidget(line_);
  layout->addWidget(note_);
  tabs_->setAccessibleName(tr("Source"));
  tabs_->setDocumentMode(true);
  load(module_file);
  tabs_->setVisible(has_source());
  legend_->setVisible(has_source());
  line_->setVisible(false);
  note_->setVisible(!note_->text().isEmpty());
  layout->addStretch(has_source() ? 0 : 1);
  connect(time_, &TimeControl::moved, this, &SourcePane::refresh);
  connect(tabs_, &QTabWidget::currentChanged, this, &SourcePane::refresh);
  connect(line_, &QLabel::linkActivated, this, [this](const QString& link) {
    const auto number = static_cast<size_t>(link.toInt());
    if (number < offered_.size()) Q_EMIT signal_wanted(offered_[number]);
  });
  refresh();
}

void SourcePane::load(const QString& module_file) {
  const std::string module = QFile::encodeName(module_file).toStdString();
  const MapFile map = module.empty() ? MapFile() : map_beside(module);
  if (!map.problem.empty()) {
    note_->setText(
        tr("The map beside the module belongs to another text of it. Compile the source\n"
           "with tarn --map FILE.zu, and it stands here, lit by what it does."));
    return;
  }
  if (map.text.empty()) {
    note_->setText(
        tr("The module has no map of its source beside it. Compile it with\n"
           "tarn --map FILE.zu, and its text stands here, lit by what it does."));
    return;
  }
  auto source = std::make_unique<LitSource>(map.text, time_->recording().simulation(), module);
  if (!source->problem().empty() || source->instances().empty()) {
    note_->setText(QString::fromStdString(source->problem()));
    return;
  }
  source_ = std::move(source);
  for (size_t instance = 0; instance < source_->instances().size(); ++instance)
    add_instance(instance);
}

void SourcePane::add_instance(size_t instance) {
  const LitSource::Instance& of = source_->instances()[instance];
  auto* text = new SourceText(of);
  texts_.push_back(text);
  // Instances of one module are told apart by their number.
  int before = 0, all = 0;
  for (size_t other = 0; other < source_->instances().size(); ++other) {
    if (source_->instances()[other].path != of.path) continue;
    ++all;
    before += other <= instance;
  }
  QString title = QString::fromStdString(of.path);
  if (all > 1) title += QString(" %1").arg(before);
  // Below the program, whose name would begin them all.
  const QString program = QString::fromStdString(source_->instances().front().path) + '/';
  if (title.startsWith(program)) title.remove(0, program.size());
  tabs_->addTab(text, title);
  tabs_->setTabToolTip(static_cast<int>(instance),
                       tr("%1, of %2").arg(title, QString::fromStdString(of.file)));
  connect(text, &SourceText::line_chosen, this, &SourcePane::tell_line);
}

std::vector<int> SourcePane::lines_of(size_t instance, SignalPlace signal) const {
  const LitSource::Instance& of = source_->instances()[instance];
  const SourceText* text = texts_[instance];
  if (signal.list == SignalPlace::local) {
    std::vector<int> lines;
    for (const SourcePlace& place : source_->places_of(instance, signal.row))
      lines.push_back(place.first_line);
    if (!lines.empty()) return lines;
  }
  std::string name = names_.name(signal);
  if (!name.ends_with(of.suffix)) return {};
  name.resize(name.size() - of.suffix.size());
  return text->lines_of(QString::fromStdString(name));
}

/// A register shows as the local that it is.
SignalPlace SourcePane::as_local(SignalPlace signal) const {
  if (signal.list != SignalPlace::register_) return signal;
  const std::vector<std::string>& locals = names_.names(SignalPlace::local);
  const auto at = std::ranges::find(locals, names_.name(signal));
  if (at == locals.end()) return signal;
  return {SignalPlace::local, static_cast<size_t>(at - locals.begin())};
}

QString SourcePane::going_on(SignalPlace reg) const {
  const SignalPlace local = as_local(reg);
  if (local.list != SignalPlace::local) return "";
  for (size_t instance = 0; instance < texts_.size(); ++instance) {
    const std::optional<SourcePlace> place = source_->going_on(instance, local.row);
    if (!place || !source_->stale(instance).empty()) continue;
    const QString words = texts_[instance]->text_of(*place);
    const QString module = tabs_->tabText(static_cast<int>(instance));
    return instance == 0 ? tr("\"%1\" (line %2)").arg(words).arg(place->first_line)
                         : tr("\"%1\" (%2, line %3)").arg(words, module).arg(place->first_line);
  }
  return "";
}

QString SourcePane::states_with(const std::vector<CodeBit>& bits) const {
  std::vector<LitSource::CodeBit> rows;
  for (const auto& [reg, one] : bits) {
    const SignalPlace local = as_local(reg);
    if (local.list != SignalPlace::local) return "";
    rows.emplace_back(local.row, one);
  }
  for (size_t instance = 0; instance < texts_.size(); ++instance)
    if (const auto names = source_->states_with(instance, rows)) {
      QStringList words;
      for (const std::string& name : *names)
        words += name.empty() ? tr("none") : QString::fromStdString(name);
      return words.join(tr(" or "));
    }
  return "";
}

void SourcePane::show_signal(SignalPlace signal) {
  if (!has_source()) return;
  signal = as_local(signal);
  size_t first = texts_.size();
  for (size_t instance = texts_.size(); instance-- > 0;)
    if (!lines_of(instance, signal).empty()) first = instance;
  const bool here = !lines_of(shown(), signal).empty();
  if (!here && first < texts_.size()) tabs_->setCurrentIndex(static_cast<int>(first));
  for (size_t instance = 0; instance < texts_.size(); ++instance)
    texts_[instance]->mark_lines(lines_of(instance, signal));
}

std::vector<SignalPlace> SourcePane::signals_of_line(int line) const {
  const std::string& suffix = source_->instances()[shown()].suffix;
  std::vector<SignalPlace> signals;
  SignalPlace place{};
  for (const QString& name : texts_[shown()]->names_of_line(line))
    if (names_.find(name.toStdString() + suffix, place)) signals.push_back(place);
  return signals;
}

void SourcePane::tell_line(int line) {
  offered_ = signals_of_line(line);
  QStringList links;
  const bool knows = !time_->busy() && time_->recording().position().instant > 0;
  for (size_t i = 0; i < offered_.size(); ++i) {
    const SignalPlace place = offered_[i];
    QString link = QString("<a href='%1' style='color:%2'>%3</a>")
                       .arg(QString::number(i), ScopeLook::current().one.name(),
                            QString::fromStdString(names_.name(place)).toHtmlEscaped());
    if (knows)
      link += " = " + QString(QChar(letter_of(shown_state(
                          time_->recording().state_at(time_->recording().position()), place))));
    links += link;
  }
  line_->setText(tr("Line %1: %2")
                     .arg(line)
                     .arg(links.isEmpty() ? tr("no signal is named in it") : links.join(", ")));
  line_->show();
}

void SourcePane::look_changed() {
  for (SourceText* text : texts_) text->look_changed();
  refresh();
}

void SourcePane::refresh() {
  QString legend;
  for (const SourceText::Sign& sign : SourceText::signs())
    legend += QString("<span style='background:%1'>&nbsp;%2&nbsp;</span>&nbsp;%3&nbsp; ")
                  .arg(sign.colour().name(), QString::fromUtf8(sign.sign),
                       tr(sign.words).replace(' ', "&nbsp;"));
  legend_->setText(legend +
                   QString("<u>%1</u>").arg(tr("a condition that holds").replace(' ', "&nbsp;")));
  if (!has_source() || tabs_->currentIndex() < 0 || time_->busy()) return;
  const QString stale = QString::fromStdString(source_->stale(shown()));
  note_->setText(stale);
  note_->setVisible(!stale.isEmpty());
  SourceText* text = texts_[shown()];
  if (line_->isVisible()) tell_line(text->current_line());
  // A text that does not fit the module is not lit: a wrong light is worse than none.
  if (!stale.isEmpty() || time_->recording().position().instant == 0) {
    text->light({}, {});
    return;
  }
  const SimulationState& state = time_->recording().simulation().state();
  text->light(source_->lit(shown(), state), source_->looked_at(shown(), state));
}

}  // namespace kiva
