#pragma once

#include <QString>

namespace kiva {

/// Makes the compiled-in pictures and the style sheet known under ":/"; may be called again.
void register_resources();

/// The text of a compiled-in file, opened read-only as text; empty when there is none.
QString stringFromResource(const QString& path);

}  // namespace kiva
