// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/RecordDiff.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>

namespace pim::app {
namespace {

using Value = rapidjson::Value;

std::string TextOf(const Value* value) {
  if (value == nullptr) return {};
  rapidjson::StringBuffer buffer;
  rapidjson::Writer writer(buffer);
  value->Accept(writer);
  return {buffer.GetString(), buffer.GetSize()};
}

class Comparison {
 public:
  void Compare(const std::string& field, const Value& before, const Value& after) {
    if (before == after) return;
    if (before.IsObject() && after.IsObject()) return CompareObjects(field, before, after);
    if (before.IsArray() && after.IsArray()) return CompareArrays(field, before, after);
    Add(field, &before, &after);
  }

  std::vector<Difference> found;

 private:
  void CompareObjects(const std::string& field, const Value& before, const Value& after) {
    for (const auto& member : before.GetObject()) {
      const std::string name =
          (field.empty() ? field : field + ".") + std::string(member.name.GetString());
      const auto other = after.FindMember(member.name);
      if (other == after.MemberEnd()) {
        Add(name, &member.value, nullptr);
      } else {
        Compare(name, member.value, other->value);
      }
    }
  }

  void CompareArrays(const std::string& field, const Value& before, const Value& after) {
    rapidjson::SizeType next = 0;  // in `after`
    for (rapidjson::SizeType i = 0; i < before.Size(); ++i) {
      const std::string name = field + "[" + std::to_string(i) + "]";
      const auto left = after.Size() - next;
      if (left != 0 && before[i] == after[next]) {
        ++next;
      } else if (left == 0 || (before.Size() - i > left && ComesLater(before, i, after[next]))) {
        Add(name, &before[i], nullptr);
      } else {
        Compare(name, before[i], after[next++]);
      }
    }
    for (; next < after.Size(); ++next)
      Add(field + "[" + std::to_string(next) + "]", nullptr, &after[next]);
  }

  // Whether what stands next stood behind the entry, which is gone then.
  static bool ComesLater(const Value& before, rapidjson::SizeType entry, const Value& next) {
    constexpr rapidjson::SizeType kFar = 64;
    const auto end = std::min(before.Size(), entry + 1 + kFar);
    for (rapidjson::SizeType i = entry + 1; i < end; ++i)
      if (before[i] == next) return true;
    return false;
  }

  void Add(const std::string& field, const Value* before, const Value* after) {
    found.push_back({field, TextOf(before), TextOf(after)});
  }
};

}  // namespace

std::vector<Difference> DifferencesOf(std::string_view before, std::string_view after) {
  if (before == after) return {};
  rapidjson::Document one;
  rapidjson::Document other;
  one.Parse(before.data(), before.size());
  other.Parse(after.data(), after.size());
  Comparison comparison;
  comparison.Compare({}, one, other);
  return std::move(comparison.found);
}

}  // namespace pim::app
