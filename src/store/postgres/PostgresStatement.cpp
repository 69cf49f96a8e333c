// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/postgres/PostgresStatement.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "store/postgres/PostgresText.h"
#include "store/postgres/WireForms.h"

namespace pim {
namespace {

// What the server makes of the parameters whose kind isn't told.
class Description final : public ResultTaker {
 public:
  void Take(PostgresResult taken) noexcept override { result_ = std::move(taken); }
  std::vector<Oid> Types() const {
    std::vector<Oid> types(static_cast<std::size_t>(PQnparams(result_.get())));
    for (std::size_t i = 0; i < types.size(); ++i)
      types[i] = PQparamtype(result_.get(), static_cast<int>(i));
    return types;
  }

 private:
  PostgresResult result_;
};

}  // namespace

PostgresStatement::PostgresStatement(PostgresConnection& connection, std::string name,
                                     const std::string& sql)
    : connection_(connection), name_(std::move(name)), sql_(PostgresSql(sql)) {}

PostgresStatement::~PostgresStatement() {
  connection_.Forget(*this);
  connection_.Forget(preparation_);
}

WireValue& PostgresStatement::At(int index) {
  const auto at = static_cast<std::size_t>(index);
  if (values_.size() < at) values_.resize(at);
  return values_[at - 1];
}

void PostgresStatement::Bind(int index, std::int64_t value) {
  WireValue& parameter = At(index);
  parameter.type = kInt8Type;
  parameter.isNull = false;
  parameter.bytes.clear();
  AppendWire(value, parameter.bytes);
}

void PostgresStatement::Bind(int index, double value) {
  WireValue& parameter = At(index);
  parameter.type = kFloat8Type;
  parameter.isNull = false;
  parameter.bytes.clear();
  AppendWire(value, parameter.bytes);
}

void PostgresStatement::BindNull(int index) { At(index).isNull = true; }

void PostgresStatement::BindText(int index, std::string_view text) {
  Buffer(index) = text;
  BindBuffer(index);
}

void PostgresStatement::BindBytes(int index, std::string_view bytes) {
  WireValue& parameter = At(index);
  parameter.type = kBytesType;
  parameter.isNull = false;
  parameter.bytes = bytes;
}

std::string& PostgresStatement::Buffer(int index) {
  std::string& buffer = At(index).bytes;
  buffer.clear();
  return buffer;
}

void PostgresStatement::BindBuffer(int index) {
  WireValue& parameter = At(index);
  parameter.type = kTextType;
  parameter.isNull = false;
  if (IsPlainText(parameter.bytes)) return;
  kept_.clear();
  AppendKeptText(parameter.bytes, kept_);
  std::swap(parameter.bytes, kept_);
}

// The kinds of parameters that have none yet, NULL all the time, are the server's to find out.
void PostgresStatement::Prepare() {
  // What was sent behind a command that fails isn't done.
  const bool isUnderWay = preparation_.IsDone() || failures_ == connection_.failures();
  if (preparedOn_ == connection_.generation() && isUnderWay) return;
  std::vector<Oid> types;
  for (const WireValue& value : values_) types.push_back(value.type);
  connection_.Forget(preparation_);
  preparation_.Restart();
  preparedOn_ = connection_.generation();
  failures_ = connection_.failures();
  connection_.SendPrepare(name_, sql_, types, &preparation_);
  types_ = types;
  if (std::ranges::find(types, Oid{0}) == types.end()) return;
  Description description;
  connection_.SendDescribe(name_, &description);
  connection_.Await(description);
  types_ = description.Types();
}

// A whole number goes into a column of reals as one. For any other kind than before the statement
// is another one.
void PostgresStatement::Send(ResultTaker* taker) {
  Prepare();
  for (std::size_t i = 0; i < values_.size(); ++i) {
    const WireValue& value = values_[i];
    if (value.isNull || value.type == types_[i]) continue;
    if (value.type == kInt8Type && types_[i] == kFloat8Type) {
      Bind(static_cast<int>(i) + 1, static_cast<double>(NumberFromWire(value.bytes)));
      continue;
    }
    name_ += '+';
    preparedOn_ = 0;
    Prepare();
    break;
  }
  connection_.SendPrepared(name_, values_, taker);
}

void PostgresStatement::Start() {
  Reset();
  Send(this);
  hasStarted_ = true;
}

bool PostgresStatement::Step() {
  if (!hasStarted_) Start();
  if (result_ == nullptr) {
    try {
      connection_.Await(*this);
    } catch (...) {
      Reset();
      throw;
    }
  }
  if (++row_ < PQntuples(result_.get())) return true;
  Reset();
  return false;
}

void PostgresStatement::Run() {
  Reset();
  Send(nullptr);
}

std::size_t PostgresStatement::RunChanging() {
  Start();
  connection_.Await(*this);
  const std::string_view changed = PQcmdTuples(result_.get());
  std::size_t rows = 0;
  std::from_chars(changed.data(), changed.data() + changed.size(), rows);
  Reset();
  return rows;
}

void PostgresStatement::Reset() noexcept {
  if (hasStarted_ && result_ == nullptr) connection_.Forget(*this);
  result_.reset();
  row_ = -1;
  hasStarted_ = false;
}

bool PostgresStatement::IsInteger(int column) const {
  const Oid type = PQftype(result_.get(), column);
  return !IsNull(column) && (type == kInt8Type || type == kInt4Type || type == kInt2Type);
}

std::int64_t PostgresStatement::Integer(int column) const {
  if (IsNull(column)) return 0;
  const std::string_view value = Value(column);
  switch (PQftype(result_.get(), column)) {
    case kBoolType:
    case kInt2Type:
    case kInt4Type:
    case kInt8Type:
      return NumberFromWire(value);
    case kFloat8Type: {
      constexpr double kFarthest = 9223372036854774784.0;  // the last one that fits
      const double real = RealFromWire(value);
      if (std::isnan(real)) return 0;
      return static_cast<std::int64_t>(std::clamp(real, -kFarthest, kFarthest));
    }
    default: {
      std::int64_t number = 0;
      std::from_chars(value.data(), value.data() + value.size(), number);
      return number;
    }
  }
}

double PostgresStatement::Real(int column) const {
  if (!IsNull(column) && PQftype(result_.get(), column) == kFloat8Type)
    return RealFromWire(Value(column));
  return static_cast<double>(Integer(column));
}

std::string_view PostgresStatement::Text(int column) {
  const std::string_view value = Value(column);
  if (!IsEscaped(value)) return value;
  const auto at = static_cast<std::size_t>(column);
  if (texts_.size() <= at) texts_.resize(at + 1);
  ReadKeptText(value, texts_[at]);
  return texts_[at];
}

}  // namespace pim
