#pragma once

#include <QFontMetrics>
#include <QString>
#include <functional>

namespace kiva {

/// The name as it stands in so many pixels: whole, or cut in the middle, or further on where cut
/// there it would look like another of the names. `name_at` gives those, `count` of them.
QString cut_name(const QString& name, const QFontMetrics& metrics, int width, int count,
                 const std::function<QString(int)>& name_at);

}  // namespace kiva
