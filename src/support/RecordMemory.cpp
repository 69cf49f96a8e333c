// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/support/RecordMemory.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "platform/Pages.h"

namespace pim {
namespace {

constexpr std::size_t kAlignment = 8;

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define PIM_WATCHED_MEMORY
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define PIM_WATCHED_MEMORY
#endif

#if defined(PIM_WATCHED_MEMORY)
constexpr std::size_t kChunkSize = 0;  // a chunk for each block, so that its bounds are watched
#else
constexpr std::size_t kChunkSize = std::size_t{64} * 1024;  // of some forty contacts
#endif
constexpr std::size_t kShared = kChunkSize / 64;  // from here on a block has a chunk of its own

// Stands at a chunk's start; in front of each block stands how far that is away.
struct Chunk {
  std::atomic<std::uint32_t> users;  // blocks, and the credit of the thread that still cuts some
};
using Distance = std::uint32_t;

// Ahead of the first block, so that blocks are aligned and the distance fits in front of each.
constexpr std::size_t kFirstBlock = 16;
static_assert(sizeof(Chunk) + sizeof(Distance) <= kFirstBlock);

constexpr std::size_t SpaceFor(std::size_t size) {
  return (size + sizeof(Distance) + kAlignment - 1) / kAlignment * kAlignment;
}

// What a thread holds of a chunk beyond the blocks that it has cut, so that cutting one needs no
// atomic step. No chunk has so many blocks.
constexpr std::uint32_t kCredit = 1U << 31;

void Leave(Chunk* chunk, std::uint32_t users) noexcept {
  if (chunk->users.fetch_sub(users, std::memory_order_acq_rel) == users) std::free(chunk);
}

Chunk* MakeChunk(std::size_t size, std::uint32_t users) {
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return new (memory) Chunk{users};
}

void* BlockAt(Chunk* chunk, std::size_t at) noexcept {
  char* block = reinterpret_cast<char*>(chunk) + at;
  const auto distance = static_cast<Distance>(at);
  std::memcpy(block - sizeof distance, &distance, sizeof distance);
  return block;
}

// The chunk that the thread cuts blocks from. A plain record, so that its use costs no guard.
struct Current {
  Chunk* chunk;
  std::size_t next;  // where the next block begins
  std::uint32_t blocks;
  bool threadEnds;
};
constinit thread_local Current current{};

void LeaveCurrent() noexcept {
  if (current.chunk != nullptr) Leave(current.chunk, kCredit - current.blocks);
  current.chunk = nullptr;
}

struct ThreadEnd {
  ~ThreadEnd() {
    LeaveCurrent();
    current.threadEnds = true;
  }
};

void* AllocateSlowly(std::size_t size) {
  if (size > std::numeric_limits<std::size_t>::max() / 2) throw std::bad_alloc();
  if (size >= kShared || current.threadEnds)
    return BlockAt(MakeChunk(kFirstBlock + size, 1), kFirstBlock);
  static thread_local ThreadEnd threadEnd;
  LeaveCurrent();
  current.chunk = MakeChunk(kChunkSize, kCredit);
  MakePagesReady(current.chunk, kChunkSize);
  current.next = kFirstBlock + SpaceFor(size);
  current.blocks = 1;
  return BlockAt(current.chunk, kFirstBlock);
}

}  // namespace

void* AllocateRecordMemory(std::size_t size) {
  Current& own = current;
  if (own.chunk == nullptr || size >= kShared || own.next + size > kChunkSize)
    return AllocateSlowly(size);
  const std::size_t at = own.next;
  own.next += SpaceFor(size);
  ++own.blocks;
  return BlockAt(own.chunk, at);
}

void FreeRecordMemory(void* block) noexcept {
  if (block == nullptr) return;
  Distance distance = 0;
  std::memcpy(&distance, static_cast<char*>(block) - sizeof distance, sizeof distance);
  Leave(reinterpret_cast<Chunk*>(static_cast<char*>(block) - distance), 1);
}

}  // namespace pim
