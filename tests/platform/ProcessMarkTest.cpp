// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/ProcessMark.h"

namespace pim {
namespace {

TEST(ProcessMark, TellsWhetherItsProcessRuns) {
  const std::string own = ProcessMark();
  EXPECT_EQ(ProcessMark(), own);
  EXPECT_TRUE(IsRunning(own));

  int marks[2];
  int ends[2];
  ASSERT_EQ(pipe(marks), 0);
  ASSERT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    close(ends[1]);
    const std::string mark = ProcessMark();
    const bool isTold = write(marks[1], mark.data(), mark.size()) > 0;
    char end = 0;
    static_cast<void>(!read(ends[0], &end, 1));  // until the parent lets it end
    _exit(isTold ? 0 : 1);
  }
  char told[4096];
  const ssize_t size = read(marks[0], told, sizeof told);
  ASSERT_GT(size, 0);
  const std::string mark(told, static_cast<std::size_t>(size));
  EXPECT_NE(mark, own);
  EXPECT_TRUE(IsRunning(mark));
  for (const int end : {marks[0], marks[1], ends[0], ends[1]}) close(end);
  siginfo_t info;
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
  EXPECT_FALSE(IsRunning(mark)) << "has ended, though nobody has asked yet how";
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  EXPECT_FALSE(IsRunning(mark));
}

TEST(ProcessMark, NoOtherMarkRuns) {
  const std::string own = ProcessMark();
  const std::size_t last = own.rfind(' ');
  std::string later = own;  // another process that has got the number
  later[last - 1] = later[last - 1] == '0' ? '1' : '0';
  for (const std::string& mark :
       {std::string(), std::string(" "), own.substr(last), own.substr(0, last + 1), own + "0",
        own + " ", "x" + own, later, std::string("a b 1 99999999999999999999")}) {
    EXPECT_FALSE(IsRunning(mark)) << mark;
  }
}

}  // namespace
}  // namespace pim
