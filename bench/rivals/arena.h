// Storage for the records of a rival: taken in blocks, given back all at once, and kept for the next document. It is
// what a host that cares for speed would write, so that no rival pays for a malloc a field.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <vector>

namespace bench {

class Arena {
public:
  void *take(size_t size) {
    size = (size + alignof(std::max_align_t) - 1) & ~(alignof(std::max_align_t) - 1);
    while (current < blocks.size()) {
      Block &block = blocks[current];
      if (size <= block.size - used) {
        void *result = block.bytes.get() + used;
        used += size;
        return result;
      }
      ++current;
      used = 0;
    }
    size_t blockSize = blocks.empty() ? 4096 : 2 * blocks.back().size;
    if (blockSize < size) blockSize = size;
    blocks.push_back({std::make_unique_for_overwrite<std::byte[]>(blockSize), blockSize});
    used = size;
    return blocks.back().bytes.get();
  }

  template <class T> T *make() {
    static_assert(std::is_trivially_destructible_v<T>);
    return new (take(sizeof(T))) T();
  }

  std::string_view copy(std::string_view text) {
    auto *bytes = static_cast<char *>(take(text.size() + 1));
    std::memcpy(bytes, text.data(), text.size());
    bytes[text.size()] = '\0';
    return {bytes, text.size()};
  }

  void clear() {
    current = 0;
    used = 0;
  }

private:
  struct Block {
    std::unique_ptr<std::byte[]> bytes;
    size_t size;
  };
  std::vector<Block> blocks;
  size_t current = 0;
  size_t used = 0;
};

// A list whose nodes come from an arena.
template <class T> class List {
  struct Node {
    T value;
    Node *next;
  };

public:
  T &append(Arena &arena) {
    Node *node = arena.make<Node>();
    (last ? last->next : first) = node;
    last = node;
    return node->value;
  }

  class Iterator {
  public:
    explicit Iterator(const Node *at) : node(at) {}
    const T &operator*() const { return node->value; }
    Iterator &operator++() {
      node = node->next;
      return *this;
    }
    bool operator==(const Iterator &) const = default;

  private:
    const Node *node;
  };
  Iterator begin() const { return Iterator(first); }
  Iterator end() const { return Iterator(nullptr); }

  friend bool operator==(const List &left, const List &right) {
    const Node *a = left.first;
    const Node *b = right.first;
    for (; a && b && a->value == b->value; a = a->next)
      b = b->next;
    return !a && !b;
  }

private:
  Node *first = nullptr;
  Node *last = nullptr;
};

} // namespace bench
