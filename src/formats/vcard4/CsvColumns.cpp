// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <stdexcept>
#include <string>

#include "formats/vcard4/ContactCsv.h"
#include "support/Ascii.h"
#include "support/Numbers.h"

namespace pim {
namespace {

constexpr NarrowStringView kColumns = R"(First Name = name.given_name
Middle Name = name.additional_name
Last Name = name.family_name
Phonetic First Name = phonetic.given_name
Phonetic Middle Name = phonetic.additional_name
Phonetic Last Name = phonetic.family_name
Name Prefix = name.prefix_name
Name Suffix = name.suffix_name
Nickname = nicknames
File As = formatted_name
Organization Name = organizations.org_name
Organization Title = org_title
Organization Department = organizations.org_position + organizations.org_additional
Birthday = events.birthday[0].event_date
Notes = comments
Labels = groups + "* starred" favorite
)";

// Columns that come several times, with their numbers from 1 for '#' and from 0 for '@'.
struct Repeated {
  int times;
  NarrowStringView columns;
};
constexpr Repeated kRepeated[] = {
    {4, R"(E-mail # - Label = emails@.email_type
E-mail # - Value = emails@.email_address
)"},
    {5, R"(Phone # - Label = telephones@.number_type
Phone # - Value = telephones@.number
)"},
    {3, R"(IM # - Service = messengers@.messenger_type
IM # - Value = messengers@.messenger_address
)"},
    {3, R"(Address # - Label = addresses@.address_type
Address # - Street = addresses@.street
Address # - City = addresses@.locality
Address # - PO Box = addresses@.post_office
Address # - Region = addresses@.region
Address # - Postal Code = addresses@.postal_code
Address # - Country = addresses@.country
Address # - Extended Address = addresses@.extended_address
)"},
    {3, R"(Website # - Label = urls@.url_type
Website # - Value = urls@.url_address
)"},
};

constexpr NarrowStringView kLastColumns = R"(Event 1 - Label = events.anniversary.event_type
Event 1 - Value = events.anniversary.event_date
Event 2 - Label = events.other.event_type
Event 2 - Value = events.other.event_date
Event 3 - Label = events.birthday[1..].event_type
Event 3 - Value = events.birthday[1..].event_date
Custom Field 1 - Label = "Role" org_role
Custom Field 1 - Value = org_role
Custom Field 2 - Label = "Hobby" hobby
Custom Field 2 - Value = hobby
Custom Field 3 - Label = "Blood Type" blood_type
Custom Field 3 - Value = blood_type
)";

// One line's term, taken from its start.
class TermReader {
 public:
  TermReader(NarrowStringView text, std::size_t line) : rest_(text), line_(line) {}

  std::vector<CsvTerm> ReadAll() {
    std::vector<CsvTerm> terms;
    do terms.push_back(Read());
    while (Takes('+'));
    if (!rest_.empty()) Fail("there is more than a field: ", rest_);
    return terms;
  }

 private:
  CsvTerm Read() {
    CsvTerm term;
    Skip();
    if (Takes('"')) {
      const std::size_t end = rest_.find('"');
      if (end == NarrowStringView::npos) Fail("a quote isn't closed: ", rest_);
      term.text = rest_.substr(0, end);
      rest_.remove_prefix(end + 1);
      Skip();
    }
    const NarrowStringView field = rest_;
    const CsvList& list = ReadList(term, field);
    ReadIndex(term);
    NarrowStringView member = TakesDot() ? Word() : NarrowStringView();
    if (!member.empty() && list.hasType != nullptr &&
        MemberOf(list, member) == list.members.size()) {
      term.word = member;
      ReadIndex(term);
      member = TakesDot() ? Word() : NarrowStringView();
    }
    term.member = MemberOf(list, member);
    if (term.member == list.members.size()) Fail("no such field: ", field);
    Skip();
    return term;
  }
  const CsvList& ReadList(CsvTerm& term, NarrowStringView field) {
    const NarrowStringView name = Word();
    const auto lists = CsvLists();
    const auto list = std::ranges::find(lists, name, &CsvList::name);
    if (list == lists.end()) Fail("no such field: ", field);
    term.list = static_cast<std::size_t>(list - lists.begin());
    return *list;
  }
  static std::size_t MemberOf(const CsvList& list, NarrowStringView name) {
    const auto member = std::ranges::find(list.members, name, &CsvMember::name);
    return static_cast<std::size_t>(member - list.members.begin());
  }
  // "[4]" or "[4..]", where one stands.
  void ReadIndex(CsvTerm& term) {
    if (!Takes('[')) return;
    const NarrowStringView digits = While(IsDigit);
    if (digits.empty()) Fail("no number: ", rest_);
    term.first = static_cast<std::size_t>(ParseNumber(digits));
    term.isOne = !rest_.starts_with("..");
    if (!term.isOne) rest_.remove_prefix(2);
    if (!Takes(']')) Fail("no ']': ", rest_);
  }

  bool Takes(char c) {
    if (!rest_.starts_with(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool TakesDot() { return Takes('.'); }
  void Skip() { rest_ = TrimLeft(rest_); }
  NarrowStringView While(bool (*belongs)(char)) {
    const auto end = std::ranges::find_if_not(rest_, belongs);
    const NarrowStringView taken(rest_.begin(), end);
    rest_.remove_prefix(taken.size());
    return taken;
  }
  NarrowStringView Word() {
    return While([](char c) { return IsLetter(c) || IsDigit(c) || c == '_'; });
  }
  [[noreturn]] void Fail(NarrowStringView what, NarrowStringView where) const {
    throw std::invalid_argument(NarrowString("line ")
                                    .append(std::to_string(line_))
                                    .append(": ")
                                    .append(what)
                                    .append(where));
  }

  NarrowStringView rest_;
  std::size_t line_;
};

NarrowString Numbered(NarrowStringView columns, int number, bool isLast) {
  NarrowString text;
  for (const char c : columns) {
    if (c == '#') {
      text.append(std::to_string(number));
    } else if (c == '@') {
      text.append(1, '[').append(std::to_string(number - 1)).append(isLast ? "..]" : "]");
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace

std::vector<CsvColumn> ReadCsvColumns(NarrowStringView text) {
  std::vector<CsvColumn> columns;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = text.find('\n');
    const NarrowStringView line = Trim(text.substr(0, end));
    text.remove_prefix(end == NarrowStringView::npos ? text.size() : end + 1);
    if (line.empty() || line.starts_with('#')) continue;
    const std::size_t equals = line.find('=');
    if (equals == NarrowStringView::npos)
      throw std::invalid_argument("line " + std::to_string(number) + ": no '='");
    columns.push_back({NarrowString(Trim(line.substr(0, equals))),
                       TermReader(Trim(line.substr(equals + 1)), number).ReadAll()});
  }
  if (columns.empty()) throw std::invalid_argument("no column");
  return columns;
}

std::vector<CsvColumn> UsualCsvColumns() {
  NarrowString text(kColumns);
  for (const Repeated& repeated : kRepeated) {
    for (int number = 1; number <= repeated.times; ++number)
      text.append(Numbered(repeated.columns, number, number == repeated.times));
  }
  return ReadCsvColumns(text.append(kLastColumns));
}

}  // namespace pim
