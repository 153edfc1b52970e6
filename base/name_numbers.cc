// An open hash (linear probing) of numbers into one block of text: entering a name moves no other,
// and a copy is three plain copies.

#include "base/name_numbers.h"

#include <functional>

namespace kiva {

namespace {

std::uint32_t hash_of(std::string_view name) {
  const size_t hash = std::hash<std::string_view>{}(name);
  return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

}  // namespace

std::string_view name_numbers::name(long number) const {
  const size_t begin = number == 0 ? 0 : ends_[number - 1];
  return std::string_view(texts_).substr(begin, ends_[number] - begin);
}

size_t name_numbers::slot_of(std::string_view text, std::uint32_t hash) const {
  size_t at = hash & (slots_.size() - 1);
  while (slots_[at].number >= 0) {
    if (slots_[at].hash == hash && name(slots_[at].number) == text) break;
    at = (at + 1) & (slots_.size() - 1);
  }
  return at;
}

void name_numbers::rehash(size_t slots) {
  std::vector<Slot> old(slots);
  old.swap(slots_);
  for (const Slot& slot : old) {
    if (slot.number < 0) continue;
    size_t at = slot.hash & (slots - 1);
    while (slots_[at].number >= 0) at = (at + 1) & (slots - 1);
    slots_[at] = slot;
  }
}

void name_numbers::reserve(size_t names) {
  size_t slots = 16;
  while (slots / 4 * 3 < names) slots *= 2;
  if (slots > slots_.size()) rehash(slots);
}

name_numbers::Entered name_numbers::enter(std::string_view text) {
  reserve(ends_.size() + 1);
  const std::uint32_t hash = hash_of(text);
  Slot& slot = slots_[slot_of(text, hash)];
  if (slot.number >= 0) return {slot.number, false};
  slot = {hash, static_cast<std::int32_t>(ends_.size())};
  texts_ += text;
  ends_.push_back(texts_.size());
  return {slot.number, true};
}

long name_numbers::find(std::string_view text) const {
  if (slots_.empty()) return -1;
  return slots_[slot_of(text, hash_of(text))].number;
}

}  // namespace kiva
