// Told operations of Compilation that read or hold what stands on higher floors.

#include "tarn/model/compilation.h"
#include "tarn/targets/frame/target_rules.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/rules.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva {

Rules& Compilation::rules() {
  return Session::current().part<Rules>();
}
TargetRules& Compilation::target_rules() {
  return Session::current().part<TargetRules>();
}
class_zu_parser& Compilation::pzu_parser() {
  return Session::current().part<class_zu_parser>();
}
void Compilation::zu_parse(const char* file) {
  read_source(file);
}

Module* Compilation::zuc_parse(const std::string& file, const std::string& instance,
                               const std::string& run_instance,
                               const std::list<std::string>* inputs,
                               const std::list<std::string>* outputs) {
  return read_told_zuc_file(file, instance, run_instance, inputs, outputs);
}
Module* Compilation::zuc_parse(const std::string& file, const std::string& instance,
                               const std::list<std::string>* inputs,
                               const std::list<std::string>* outputs) {
  return zuc_parse(file, instance, EmptyString, inputs, outputs);
}
std::string Compilation::getZucFileName(const std::string& module) {
  return listed_zuc_file(module);
}
int Compilation::getReincarnateFromZucFile(const std::string& module) {
  return reincarnate_of_listed(module);
}
int Compilation::getReincarnateFromZucFile(const std::string& module, const std::string& file) {
  return reincarnate_in(module, file);
}
Module* Compilation::createModuleFromZucCode(const std::string& module,
                                             const std::list<std::string>* inputs,
                                             const std::list<std::string>* outputs) {
  const std::string file = listed_zuc_file(module);
  return file.empty() ? nullptr : zuc_parse(file, EmptyString, inputs, outputs);
}

}  // namespace kiva
