// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemRules.h"

#include <algorithm>
#include <string>
#include <vector>

#include "formats/icalendar/RuleDates.h"
#include "formats/icalendar/RuleDown.h"
#include "formats/icalendar/RuleText.h"
#include "pim/manager/TypeWords.h"
#include "support/Ascii.h"

namespace pim {
namespace {

// As libical spells a rule, so that two that say the same are equal.
std::string SpeltRule(const std::string& text) {
  icalrecurrencetype rule = icalrecurrencetype_from_string(text.c_str());
  if (rule.freq == ICAL_NO_RECURRENCE) return {};
  const IcalOwner<char> spelt(Made(icalrecurrencetype_as_string_r(&rule)));
  return spelt.get();
}

class RulesDown {
 public:
  RulesDown(const ItemLines& lines, const DownTimes& times, const std::optional<ItemTime>& start,
            const TellFormatLoss& tell, DownLines& out)
      : lines_(lines), times_(times), start_(start), tell_(tell), out_(out) {}

  void Append();

 private:
  bool Has(ItemProperty property) const { return lines_.single[property] != nullptr; }
  const ContentLine* LineOf(ItemProperty property) const { return lines_.single[property]; }
  void Drop(const ContentLine& line, FormatReason reason) {
    tell_({std::string(line.Name()), FormatVerdict::Dropped, reason, line.line});
  }
  RecurrencePointer RuleOf(const std::string& said);
  void AppendExceptions(const std::string& said);
  bool AreExceptions(const std::vector<ItemTime>& dates, const RecurrenceData& rule,
                     const std::string& said) const;

  const ItemLines& lines_;
  const DownTimes& times_;
  const std::optional<ItemTime>& start_;
  const TellFormatLoss& tell_;
  DownLines& out_;
};

void RulesDown::Append() {
  const ContentLine* const line = LineOf(ITEM_RULE);
  const std::string said = line == nullptr ? std::string() : std::string(line->Value());
  CRecurrence rule;
  rule.data = RuleOf(said);
  if (rule.data != nullptr) {
    out_.AppendWord("RRULE", RuleWords(rule));
  } else if (line != nullptr) {
    Drop(*line, SpeltRule(said).empty() ? FormatReason::BadValue : FormatReason::RuleTooRich);
  }
  AppendExceptions(said);
}

// The own rule counts while it says what RRULE says.
RecurrencePointer RulesDown::RuleOf(const std::string& said) {
  if (Has(ITEM_OWN_RULE)) {
    RecurrencePointer own = RuleOfWords(Trim(LineOf(ITEM_OWN_RULE)->Value()));
    const std::string says =
        own == nullptr || !start_ ? std::string() : SpeltRule(RRuleOf(*own, start_->local).text);
    if (own != nullptr && says == SpeltRule(said)) return own;
    Drop(*LineOf(ITEM_OWN_RULE), FormatReason::Replaced);
  }
  return said.empty() || !start_ ? nullptr : RuleOfRRule(said, start_->local);
}

void RulesDown::AppendExceptions(const std::string& said) {
  std::vector<ItemTime> dates;
  for (const ContentLine* line : lines_.exceptions) {
    const std::vector<ItemTime> times = times_.TimesOf(*line);
    dates.insert(dates.end(), times.begin(), times.end());
  }
  if (Has(ITEM_OWN_EXCEPTION)) {
    CRecurrence exception;
    exception.data = RuleOfWords(Trim(LineOf(ITEM_OWN_EXCEPTION)->Value()));
    if (exception.data != nullptr && AreExceptions(dates, *exception.data, said)) {
      out_.AppendWord("XRULE", RuleWords(exception));
      return;
    }
    Drop(*LineOf(ITEM_OWN_EXCEPTION), FormatReason::Replaced);
  }
  for (const ContentLine* line : lines_.exceptions) Drop(*line, FormatReason::NoProperty);
}

// Whether the rule takes away these dates and no others.
bool RulesDown::AreExceptions(const std::vector<ItemTime>& dates, const RecurrenceData& rule,
                              const std::string& said) const {
  if (!start_) return dates.empty();
  const auto less = [](const COleDateTime& a, const COleDateTime& b) { return a < b; };
  std::vector<COleDateTime> told;
  told.reserve(dates.size());
  for (const ItemTime& date : dates) told.push_back(date.utc);
  std::ranges::sort(told, less);
  std::vector<COleDateTime> away;
  const ExceptionDates exceptions =
      ExceptionDatesOf(said, RRuleOf(rule, start_->local).text, start_->local);
  away.reserve(exceptions.dates.size());
  for (const icaltimetype& date : exceptions.dates) away.push_back(UtcOfTime(date));
  return told == away;
}

}  // namespace

void AppendRules(const ItemLines& lines, const DownTimes& times,
                 const std::optional<ItemTime>& start, const TellFormatLoss& tell, DownLines& out) {
  RulesDown(lines, times, start, tell, out).Append();
}

}  // namespace pim
