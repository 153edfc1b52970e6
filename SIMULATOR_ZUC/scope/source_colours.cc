#include "SIMULATOR_ZUC/scope/source_colours.h"

#ifdef KIVA_KSYNTAX
#include <KSyntaxHighlighting/Definition>
#include <KSyntaxHighlighting/Format>
#include <KSyntaxHighlighting/Repository>
#include <KSyntaxHighlighting/SyntaxHighlighter>
#include <KSyntaxHighlighting/Theme>

#include "SIMULATOR_ZUC/scope/scope_look.h"

namespace kiva {

namespace {

/// Reads its many definitions once for all texts.
KSyntaxHighlighting::Repository& repository() {
  static KSyntaxHighlighting::Repository kept;
  return kept;
}

/// Weight and slant are the theme's; what it shows too faintly on the scope's panes has the look's
/// own colours.
class SourceColours : public KSyntaxHighlighting::SyntaxHighlighter {
 public:
  explicit SourceColours(QTextDocument* document) : SyntaxHighlighter(document) {
    setDefinition(repository().definitionForName("ZU"));
  }

  void choose_theme() {
    const bool dark = ScopeLook::current().pane.lightness() < 128;
    setTheme(repository().defaultTheme(dark ? KSyntaxHighlighting::Repository::DarkTheme
                                            : KSyntaxHighlighting::Repository::LightTheme));
    rehighlight();
  }

 protected:
  void applyFormat(int offset, int length, const KSyntaxHighlighting::Format& format) override {
    const ScopeLook& look = ScopeLook::current();
    QTextCharFormat own;
    if (format.textStyle() == KSyntaxHighlighting::Theme::Comment)
      own.setForeground(look.faint);
    else if (format.textStyle() == KSyntaxHighlighting::Theme::DataType)
      own.setForeground(look.one);
    else if (format.textStyle() == KSyntaxHighlighting::Theme::Operator)
      own.setForeground(look.text);
    else
      return SyntaxHighlighter::applyFormat(offset, length, format);
    setFormat(offset, length, own);
  }
};

}  // namespace

QSyntaxHighlighter* make_source_colours(QTextDocument* document) {
  return new SourceColours(document);
}

void look_changed(QSyntaxHighlighter* colours) {
  static_cast<SourceColours*>(colours)->choose_theme();
}

}  // namespace kiva

#else

namespace kiva {

QSyntaxHighlighter* make_source_colours(QTextDocument*) {
  return nullptr;
}

void look_changed(QSyntaxHighlighter*) {}

}  // namespace kiva

#endif
