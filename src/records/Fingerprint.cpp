// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "records/Fingerprint.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

namespace pim {

namespace {

std::uint64_t RandomWord() {
  std::random_device device;
  return std::uint64_t{device()} << 32 | device();
}

// SipHash-2-4 with 128 bits of result.
class SipHash {
 public:
  SipHash(std::uint64_t k0, std::uint64_t k1)
      : v_{k0 ^ 0x736f6d6570736575, k1 ^ 0x646f72616e646f6d ^ 0xee, k0 ^ 0x6c7967656e657261,
           k1 ^ 0x7465646279746573} {}

  Fingerprint Of(std::string_view bytes) {
    std::uint64_t last = std::uint64_t{bytes.size()} << 56;
    for (; bytes.size() >= 8; bytes.remove_prefix(8)) Take(WordAt(bytes, 8));
    last |= WordAt(bytes, bytes.size());
    Take(last);
    v_[2] ^= 0xee;
    const std::uint64_t low = Finish();
    v_[1] ^= 0xdd;
    return {low, Finish()};
  }

 private:
  static std::uint64_t WordAt(std::string_view bytes, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), count);
    return word;
  }
  void Take(std::uint64_t word) {
    v_[3] ^= word;
    Round();
    Round();
    v_[0] ^= word;
  }
  std::uint64_t Finish() {
    for (int i = 0; i < 4; ++i) Round();
    return v_[0] ^ v_[1] ^ v_[2] ^ v_[3];
  }
  void Round() {
    v_[0] += v_[1];
    v_[1] = std::rotl(v_[1], 13) ^ v_[0];
    v_[0] = std::rotl(v_[0], 32);
    v_[2] += v_[3];
    v_[3] = std::rotl(v_[3], 16) ^ v_[2];
    v_[0] += v_[3];
    v_[3] = std::rotl(v_[3], 21) ^ v_[0];
    v_[2] += v_[1];
    v_[1] = std::rotl(v_[1], 17) ^ v_[2];
    v_[2] = std::rotl(v_[2], 32);
  }

  std::array<std::uint64_t, 4> v_;
};

// Lays the values of fields one behind the other, each text behind its length, so that two records
// give the same bytes only when they hold the same.
class ContentBytes {
 public:
  explicit ContentBytes(std::string& bytes) : bytes_(bytes) {}

  void operator()(const WideText* text) {
    Append(std::uint64_t{text->size()});
    const WideStringView units = text->view();
    bytes_.append(reinterpret_cast<const char*>(units.data()), units.size() * sizeof(char16_t));
  }
  void operator()(const std::int32_t* number) { Append(*number); }
  void operator()(const std::uint32_t* number) { Append(*number); }
  void operator()(const std::uint8_t* number) { Append(*number); }
  void operator()(const DESKMATE_IDS::Alarm* kind) { Append(*kind); }
  void operator()(const COleDateTimeNull* time) { AppendDays(time->value, time->status); }
  void operator()(const COleDateTimeSpan* span) { AppendDays(span->value, span->status); }
  void operator()(const std::vector<WideText>* texts) {
    Append(std::uint64_t{texts->size()});
    for (const WideText& text : *texts) (*this)(&text);
  }
  void operator()(const RecurrenceList* list) {
    Append(std::uint64_t{list->size()});
    for (const std::int32_t number : *list) Append(number);
  }
  void operator()(const WholeSeconds& seconds) { (*this)(seconds.time); }
  // Told already: by the column of seconds, by the index of pictures, by the fields it follows
  // from.
  void operator()(const ExactDay&) {}
  void operator()(const PictureName&) {}
  void operator()(const DerivedNumber&) {}

  template <class Number>
  void Append(Number number) {
    bytes_.append(reinterpret_cast<const char*>(&number), sizeof number);
  }

 private:
  // A value counts only where the status is valid; what isn't finite is stored as invalid.
  void AppendDays(double value, DateTimeStatus status) {
    if (status == StatusValid && !std::isfinite(value)) status = StatusInvalid;
    Append(status);
    if (status == StatusValid) Append(value + 0.0);  // -0 is 0
  }

  std::string& bytes_;
};

}  // namespace

FingerprintKey NewFingerprintKey() { return {RandomWord(), RandomWord()}; }

Fingerprint FingerprintOf(std::string_view bytes, const FingerprintKey& key) {
  return SipHash(key.low, key.high).Of(bytes);
}

Fingerprint FingerprintOf(const RecordMap& map, void* record, const FingerprintKey& key) {
  std::string bytes;
  bytes.reserve(1024);
  ContentBytes content(bytes);
  for (const FieldMap& field : map.fields)
    if (field.role == FieldRole::Content) std::visit(content, field.field(record));
  RuleRow work;
  for (const ListMap& list : map.lists) {
    const std::size_t count = list.count(record);
    content.Append(std::uint64_t{count});
    for (std::size_t i = 0; i < count; ++i) {
      void* entry = list.at(record, i, work);
      for (const FieldMap& field : list.fields) std::visit(content, field.field(entry));
    }
  }
  return FingerprintOf(bytes, key);
}

}  // namespace pim
