#include "tarn/zu/statements/repeat.h"

#include "tarn/model/sexception.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statements/sequence.h"

namespace kiva {

Statement* read_repeat(class_zu_parser& reader, int count, Statement* body) {
  if (count < 1) {
    reader.refuse(IllegalOperationException("is a bad number for repeat", std::to_string(count)),
                  "repeat wants a number of 1 or more, not " + std::to_string(count));
    return body;
  }
  return Sn::read(reader, reader.copies(body, count));
}

}  // namespace kiva
