// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "records/StoreLayout.h"
#include "store/Prepared.h"
#include "store/postgres/PostgresConnection.h"

namespace pim {

// Rows by COPY in its binary form (PostgreSQL's manual, COPY, "Binary Format").
class CopyRows final : public BulkRows {
 public:
  CopyRows(PostgresConnection& connection, const TableLayout& table,
           std::span<const std::string_view> columns);

  void Bind(int index, std::int64_t value) override;
  void Bind(int index, double value) override;
  void BindNull(int index) override;
  void BindText(int index, std::string_view text) override;
  void BindBytes(int index, std::string_view bytes) override;
  std::string& Buffer(int index) override;
  void BindBuffer(int index) override { BindText(index, buffer_); }

  void Start() override;
  void EndRow() override;
  void Finish() override;

 private:
  void StartColumn(int index);
  void Append(std::string_view bytes);

  PostgresConnection& connection_;
  std::string sql_;
  std::vector<bool> isReal_;  // by column
  std::string rows_;          // not sent yet
  std::string buffer_;
  std::string kept_;
};

}  // namespace pim
