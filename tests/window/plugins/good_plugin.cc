#include <QObject>
#include <QVariant>

#include "SIMULATOR_ZUC/classic/plugininterface.h"

namespace kiva::test {

/// Leaves a property on itself when it is called.
class GoodPlugin : public QObject, public PluginInterface {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "Plugininterface/1.1")
  Q_INTERFACES(kiva::PluginInterface)

 public:
  QString name() const override { return "good"; }
  void evaluated(QObject* argument) override {
    setProperty("called_with_nothing", argument == nullptr);
  }
};

}  // namespace kiva::test

#include "good_plugin.moc"
