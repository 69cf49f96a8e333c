// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/Handles.h"

namespace pim::app {

// Bytes that come one piece after another and are gone then.
class ByteSource {
 public:
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  virtual ~ByteSource() = default;

  // Puts up to `room` bytes at `to`, and gives their number: 0 at the end alone. Throws Failure or
  // Interrupted.
  virtual std::size_t Read(char* to, std::size_t room) = 0;
};

// A regular file of any length, a FIFO, or standard input for "-".
class FileSource final : public ByteSource {
 public:
  // Throws Failure for what can't be opened.
  explicit FileSource(const std::string& path);
  ~FileSource() override;

  // From a FIFO that nobody begins to write to within a second nothing comes.
  std::size_t Read(char* to, std::size_t room) override;

 private:
  bool WaitForWriter() const;

  std::string path_;
  Descriptor file_;
  bool isStandardInput_;
  bool waits_ = false;  // where a read wouldn't
};

// Whether reading it waits for whoever writes it: standard input or a FIFO.
bool IsStream(const std::string& path);

[[noreturn]] void FailToRead(const std::string& path, const std::string& reason);

}  // namespace pim::app
