#include "tarn/model/fault_under_way.h"

#include <exception>
#include <new>

#include "tarn/model/sexception.h"

namespace kiva {

Diagnostic fault_under_way(const std::string& file) {
  Diagnostic fault;
  try {
    throw;
  } catch (const FatalDiagnostic& fatal) {
    fault = fatal.diagnostic();
  } catch (const LibraryException& exception) {
    fault = diagnostic_of(exception);
  } catch (const std::bad_alloc&) {
    fault.sentence = "out of memory";
  } catch (const std::exception& exception) {
    fault.sentence = exception.what();
  } catch (...) {
    fault.sentence = "stopped by an unknown fault";
  }
  if (!fault.where.known()) fault.where.file = file;
  return fault;
}

}  // namespace kiva
