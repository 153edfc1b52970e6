#include <QObject>

namespace kiva::test {

/// A plugin of the toolkit, but none of the simulator.
class OtherPlugin : public QObject {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "Otherinterface/1.0")
};

}  // namespace kiva::test

#include "other_plugin.moc"
