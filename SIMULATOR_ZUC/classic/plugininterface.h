#pragma once

#include <QObject>
#include <QString>

namespace kiva {

/// What a plugin of the simulator implements, in a QObject that names the interface with
/// Q_INTERFACES. The order of the operations is part of the interface.
class PluginInterface {
 public:
  /// What the plugin calls itself.
  virtual QString name() const = 0;
  /// Called once after the plugins have loaded; `argument` is null.
  virtual void evaluated(QObject* argument) = 0;

 protected:
  ~PluginInterface() = default;
};

}  // namespace kiva

Q_DECLARE_INTERFACE(kiva::PluginInterface, "Plugininterface/1.1")
