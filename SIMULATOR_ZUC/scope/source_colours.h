#pragma once

class QSyntaxHighlighter;
class QTextDocument;

namespace kiva {

/// Lays the colours of the language over a source text, those that editors/ksyntaxhighlighting has
/// for editors, too; the document owns them. Null where the program was built without
/// KSyntaxHighlighting: a text then has one colour.
QSyntaxHighlighter* make_source_colours(QTextDocument* document);

/// To be called when the look has changed.
void look_changed(QSyntaxHighlighter* colours);

}  // namespace kiva
