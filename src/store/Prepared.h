// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pim {

// What an engine gives of a statement. Operations throw StoreError.

// The places that values go to: a statement's parameters, or the columns of a row. They count from
// 1; those of a row are filled in their order.
class Parameters {
 public:
  virtual ~Parameters() = default;

  virtual void Bind(int index, std::int64_t value) = 0;
  virtual void Bind(int index, double value) = 0;
  virtual void BindNull(int index) = 0;
  // The caller keeps the bytes as they are until the statement has run.
  virtual void BindText(int index, std::string_view text) = 0;
  virtual void BindBytes(int index, std::string_view bytes) = 0;
  // The parameter's own work buffer, empty, and the parameter bound to the text put into it.
  virtual std::string& Buffer(int index) = 0;
  virtual void BindBuffer(int index) = 0;
};

// One statement. A parameter keeps its value from run to run until another is bound. Columns count
// from 0.
class PreparedStatement : public Parameters {
 public:
  // Lets the engine begin, so that several statements are under way at once; Step then finds its
  // rows. Parameters of a statement that has started stay as they are until its first step.
  virtual void Start() {}
  // True while a row stands ready; behind the last one the statement can be run again.
  [[nodiscard]] virtual bool Step() = 0;
  // For statements without rows. The engine may tell later what goes wrong, at the latest when the
  // transaction, inner or not, is committed.
  virtual void Run() = 0;
  // Gives the number of rows that it has changed.
  [[nodiscard]] virtual std::size_t RunChanging() = 0;
  // Ends a reading before its last row.
  virtual void Reset() noexcept = 0;

  [[nodiscard]] virtual bool IsNull(int column) const = 0;
  // The first column from that one on, and before `end`, that isn't NULL, or `end`.
  [[nodiscard]] virtual int NextFilled(int column, int end) const = 0;
  // A text counts as the number it starts with.
  [[nodiscard]] virtual std::int64_t Integer(int column) const = 0;
  [[nodiscard]] virtual double Real(int column) const = 0;
  [[nodiscard]] virtual bool IsInteger(int column) const = 0;
  // Good until the next step, or another look at the same column.
  [[nodiscard]] virtual std::string_view Text(int column) = 0;
  [[nodiscard]] virtual std::string_view Bytes(int column) = 0;
};

// Many rows of one table, on a way of the engine's that is quicker than statements.
class BulkRows : public Parameters {
 public:
  virtual void Start() = 0;
  // Behind the last column of each row.
  virtual void EndRow() = 0;
  // Behind the last row.
  virtual void Finish() = 0;
};

}  // namespace pim
