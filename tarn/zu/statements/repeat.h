#pragma once

namespace kiva {

class Statement;
class class_zu_parser;

/// `repeat 3 { p }` is three numbered copies of p, one after the other.
/// IllegalOperationException for a count below 1.
Statement* read_repeat(class_zu_parser& reader, int count, Statement* body);

}  // namespace kiva
