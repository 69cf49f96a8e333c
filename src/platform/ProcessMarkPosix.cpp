// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <charconv>
#include <climits>
#include <fstream>
#include <iterator>

#include "platform/ProcessMark.h"

namespace pim {
namespace {

std::string ContentOf(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The state and the start of a process, which stand behind its name; the name is in parentheses and
// may hold anything.
struct ProcessStart {
  char state = 'X';
  std::string ticks;  // since the machine's start
};
ProcessStart StartOf(pid_t process) {
  constexpr int kTicksAt = 20;  // fields behind the name, from 1
  const std::string status = ContentOf("/proc/" + std::to_string(process) + "/stat");
  const std::size_t name = status.rfind(')');
  if (name == std::string::npos || name + 2 >= status.size()) return {};
  ProcessStart start{status[name + 2], {}};
  std::size_t at = name + 1;
  for (int field = 1; field < kTicksAt && at != std::string::npos; ++field)
    at = status.find(' ', at + 1);
  if (at != std::string::npos)
    start.ticks = status.substr(at + 1, status.find(' ', at + 1) - at - 1);
  return start;
}

// Numbers of processes and their starts mean something within one start of one machine, and within
// one space of processes.
std::string MarkOf(pid_t process, const std::string& ticks) {
  std::string machine = ContentOf("/proc/sys/kernel/random/boot_id");
  machine.erase(machine.find_last_not_of('\n') + 1);
  char space[PATH_MAX] = {};
  if (readlink("/proc/self/ns/pid", space, sizeof space - 1) < 0) space[0] = '\0';
  return machine + " " + space + " " + ticks + " " + std::to_string(process);
}

}  // namespace

std::string ProcessMark() { return MarkOf(getpid(), StartOf(getpid()).ticks); }

bool IsRunning(std::string_view mark) {
  const std::size_t last = mark.rfind(' ');
  if (last == std::string_view::npos) return false;
  pid_t process = 0;
  const char* end = mark.data() + mark.size();
  const auto [behind, error] = std::from_chars(mark.data() + last + 1, end, process);
  if (error != std::errc() || behind != end || process <= 0) return false;
  const ProcessStart start = StartOf(process);
  const bool ended = start.state == 'Z' || start.state == 'X' || start.ticks.empty();
  return !ended && MarkOf(process, start.ticks) == mark;
}

}  // namespace pim
