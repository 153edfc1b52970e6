#include "bdd/unique_table.h"

#include <algorithm>
#include <new>
#include <tuple>

namespace kiva {

namespace {
constexpr int first_bucket_bits = 8;
constexpr std::align_val_t cache_line{64};
}  // namespace

unique_table::unique_table(bddpp_manager* manager)
    : manager_(manager),
      buckets_(std::size_t{1} << first_bucket_bits, nullptr),
      bucket_shift_(64 - first_bucket_bits) {}

unique_table::~unique_table() {
  for (bdd_node* chunk : chunks_) ::operator delete(chunk, cache_line);
}

void unique_table::add_chunk() {
  const std::size_t size = chunk_size(static_cast<int>(chunks_.size()));
  chunks_.reserve(chunks_.size() + 1);
  unused_ = static_cast<bdd_node*>(::operator new(size * sizeof(bdd_node), cache_line));
  chunk_end_ = unused_ + size;
  chunks_.push_back(unused_);
}

bdd_node* unique_table::make_constant() {
  bdd_node* node = make(-1, false, nullptr, nullptr);
  node->internal_in_table = false;
  return node;
}

bdd_node* unique_table::make_variable(int var_id, bdd_node* one) {
  bdd_node* node = make(var_id, true, one, one);
  link_in(node, bucket_of(node));
  return node;
}

void unique_table::integrate(bdd_node* node) {
  suppress(node);
  link_in(node, bucket_of(node));
}

void unique_table::suppress(const bdd_node* node) {
  for (bdd_node** at = &buckets_[bucket_of(node)]; *at != nullptr; at = &(*at)->internal_next) {
    bdd_node* found = *at;
    if (found->internal_then == node->internal_then &&
        found->internal_else == node->internal_else &&
        found->internal_var_id == node->internal_var_id &&
        found->internal_else_link_type == node->internal_else_link_type) {
      *at = found->internal_next;
      found->internal_in_table = false;
      --in_table_;
      return;
    }
  }
}

void unique_table::destroy(bdd_node* node) {
  suppress(node);
  if (node == last_made_) last_made_ = nullptr;
  node->internal_next = free_;
  free_ = node;
}

void unique_table::grow() {
  const std::size_t size = buckets_.size() * 4;
  buckets_ = {};
  buckets_.assign(size, nullptr);
  bucket_shift_ -= 2;
  for_each([this](bdd_node* node) {
    const std::size_t bucket = bucket_of(node);
    node->internal_next = buckets_[bucket];
    buckets_[bucket] = node;
  });
}

std::vector<bdd_node*> unique_table::listing() const {
  std::vector<bdd_node*> nodes;
  nodes.reserve(in_table_);
  for_each([&](bdd_node* node) { nodes.push_back(node); });
  const auto key = [](const bdd_node* node) {
    return std::tuple(node->internal_var_id, node->internal_then->internal_global_id,
                      node->internal_else->internal_global_id, node->internal_else_link_type);
  };
  std::sort(nodes.begin(), nodes.end(),
            [&](const bdd_node* a, const bdd_node* b) { return key(a) < key(b); });
  return nodes;
}

}  // namespace kiva
