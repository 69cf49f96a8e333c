// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include "bench/Texts.h"
#include "formats/icalendar/ICalendarDown.h"
#include "formats/icalendar/ItemForms.h"
#include "pim/manager/TextReading.h"

namespace pim::bench {
namespace {

CCalendars ReadItems(std::int64_t count) {
  CCalendars items;
  benchmark::DoNotOptimize(ReadCalendars(MakeEvents(count), items));
  return items;
}

void WriteICalendar(benchmark::State& state) {
  const CCalendars items = ReadItems(state.range(0));
  std::string text;
  std::int64_t bytes = 0;
  for (auto _ : state) {
    const std::unique_ptr<ItemForm> form = MakeICalendarForm();
    for (std::int32_t i = 0; i < items.GetCount(); ++i) {
      text.clear();
      form->Append(items[i], {}, text);
      bytes += static_cast<std::int64_t>(text.size());
    }
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(WriteICalendar)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void ItemsDown(benchmark::State& state) {
  const CCalendars items = ReadItems(state.range(0));
  std::vector<std::string> components(static_cast<std::size_t>(items.GetCount()));
  const std::unique_ptr<ItemForm> form = MakeICalendarForm();
  for (std::int32_t i = 0; i < items.GetCount(); ++i)
    form->Append(items[i], {}, components[static_cast<std::size_t>(i)]);
  std::string out;
  std::int64_t bytes = 0;
  ICalendarDown down;
  for (auto _ : state) {
    for (const std::string& component : components) {
      down.Convert(component, {}, out);
      bytes += static_cast<std::int64_t>(component.size());
    }
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(ItemsDown)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
