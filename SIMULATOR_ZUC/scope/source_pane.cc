#include "SIMULATOR_ZUC/scope/source_pane.h"

#include <QFile>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QVBoxLayout>

#include "SIMULATOR_ZUC/scope/scope_look.h"

namespace kiva {

namespace {

/// Comments are said beside.
class Comments : public QSyntaxHighlighter {
 public:
  using QSyntaxHighlighter::QSyntaxHighlighter;

 protected:
  void highlightBlock(const QString& line) override {
    const int at = line.indexOf(";;");
    if (at < 0) return;
    QTextCharFormat format;
    format.setForeground(ScopeLook::current().faint);
    setFormat(at, line.size() - at, format);
  }
};

QColor colour_of(const Light& light) {
  const ScopeLook& look = ScopeLook::current();
  if (light.killed) return look.killed;
  if (light.waits) return look.one_fill;
  return light.ended && !light.started ? look.ended : look.started;
}

}  // namespace

SourcePane::SourcePane(TimeControl* time, const QString& module_file, QWidget* parent)
    : QWidget(parent), time_(time), tabs_(new QTabWidget), note_(new QLabel), legend_(new QLabel) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  note_->setWordWrap(true);
  note_->setAccessibleName(tr("About the source"));
  layout->addWidget(legend_);
  layout->addWidget(tabs_, 1);
  layout->addWidget(note_);
  tabs_->setAccessibleName(tr("Source"));
  tabs_->setDocumentMode(true);
  load(module_file);
  tabs_->setVisible(has_source());
  legend_->setVisible(has_source());
  note_->setVisible(!note_->text().isEmpty());
  layout->addStretch(has_source() ? 0 : 1);
  connect(time_, &TimeControl::moved, this, &SourcePane::refresh);
  connect(tabs_, &QTabWidget::currentChanged, this, &SourcePane::refresh);
  refresh();
}

void SourcePane::load(const QString& module_file) {
  QFile file(module_file + ".map");
  if (module_file.isEmpty() || !file.open(QIODevice::ReadOnly)) {
    note_->setText(
        tr("The module has no map of its source beside it. Compile it with\n"
           "tarn --map FILE.zu, and its text stands here, lit by what it does."));
    return;
  }
  auto source =
      std::make_unique<LitSource>(file.readAll().toStdString(), time_->recording().simulation());
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
  auto* text = new QPlainTextEdit;
  text->setReadOnly(true);
  text->setFrameShape(QFrame::NoFrame);
  text->setLineWrapMode(QPlainTextEdit::NoWrap);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text->setAccessibleName(QString::fromStdString(of.path));
  QFile file(QFile::decodeName(of.file.c_str()));
  if (file.open(QIODevice::ReadOnly)) text->setPlainText(QString::fromUtf8(file.readAll()));
  new Comments(text->document());
  texts_.push_back(text);
  tabs_->addTab(text, QString::fromStdString(of.path));
  tabs_->setTabToolTip(static_cast<int>(instance), QString::fromStdString(of.file));
}

void SourcePane::refresh() {
  const ScopeLook& look = ScopeLook::current();
  const auto chip = [](const QColor& colour, const QString& text) {
    return QString("<span style='background:%1'>&nbsp;&nbsp;&nbsp;</span> %2&nbsp;&nbsp; ")
        .arg(colour.name(), text);
  };
  legend_->setText(chip(look.one_fill, tr("waits or goes on")) +
                   chip(look.started, tr("started now")) + chip(look.ended, tr("ended now")) +
                   chip(look.killed, tr("killed now")));
  const int shown = tabs_->currentIndex();
  if (!has_source() || shown < 0 || time_->busy()) return;
  const auto instance = static_cast<size_t>(shown);
  const QString stale = QString::fromStdString(source_->stale(instance));
  note_->setText(stale);
  note_->setVisible(!stale.isEmpty());
  QList<QTextEdit::ExtraSelection> marks;
  QPlainTextEdit* text = texts_[instance];
  // A text that does not fit the module is not lit: a wrong light is worse than none.
  if (stale.isEmpty() && time_->recording().position().instant > 0) {
    for (const LitSource::Lit& lit :
         source_->lit(instance, time_->recording().simulation().state())) {
      const QTextBlock first = text->document()->findBlockByNumber(lit.place.first_line - 1);
      const QTextBlock last = text->document()->findBlockByNumber(lit.place.last_line - 1);
      if (!first.isValid() || !last.isValid()) continue;
      // Columns count bytes.
      const auto column = [](const QTextBlock& block, int bytes) {
        return QString::fromUtf8(block.text().toUtf8().left(bytes)).size();
      };
      QTextEdit::ExtraSelection mark;
      mark.cursor = QTextCursor(first);
      mark.cursor.setPosition(first.position() + column(first, lit.place.first_column - 1));
      mark.cursor.setPosition(last.position() + column(last, lit.place.last_column),
                              QTextCursor::KeepAnchor);
      mark.format.setBackground(colour_of(lit.light));
      marks.push_back(mark);
    }
  }
  text->setExtraSelections(marks);
}

}  // namespace kiva
