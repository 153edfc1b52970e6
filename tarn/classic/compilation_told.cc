// The told surface of Compilation: ways to the readers of the floors above it, one call each.

#include "tarn/model/compilation.h"

#include "tarn/session/session.h"
#include "tarn/targets/frame/target_rules.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/zu_file.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva {

TargetRules& Compilation::target_rules() {
  return Session::current().part<TargetRules>();
}
class_zu_parser& Compilation::pzu_parser() {
  return Session::current().part<class_zu_parser>();
}
void Compilation::zu_parse(const char* file) {
  read_zu_file(file);
}
Module* Compilation::zuc_parse(const std::string& file, const std::string& instance,
                               const std::string& run_instance,
                               const std::list<std::string>* inputs,
                               const std::list<std::string>* outputs) {
  return read_zuc(file, instance, run_instance, inputs, outputs);
}
Module* Compilation::zuc_parse(const std::string& file, const std::string& instance,
                               const std::list<std::string>* inputs,
                               const std::list<std::string>* outputs) {
  return read_zuc(file, instance, EmptyString, inputs, outputs);
}
std::string Compilation::getZucFileName(const std::string& module) {
  return listed_zuc_file(module);
}
int Compilation::getReincarnateFromZucFile(const std::string& module) {
  return listed_zuc_reincarnate(module);
}
int Compilation::getReincarnateFromZucFile(const std::string& module, const std::string& file) {
  return zuc_reincarnate(module, file);
}
Module* Compilation::createModuleFromZucCode(const std::string& module,
                                             const std::list<std::string>* inputs,
                                             const std::list<std::string>* outputs) {
  return read_listed_zuc(module, inputs, outputs);
}

}  // namespace kiva
