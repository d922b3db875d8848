#include "services/work.h"

#include <gtest/gtest.h>

namespace rws {
namespace {

TEST(Work, TellsHowFarItIsAndHowLongItStillTakes) {
  using std::chrono::milliseconds;
  struct Row {
    std::size_t Done, Of;
    int Milliseconds;
    const char* Text;
  };
  for (const Row& row :
       {Row{1, 17, 999, "File 1 of 17"}, Row{0, 17, 5000, "File 0 of 17"},
        Row{17, 17, 5000, "File 17 of 17"}, Row{1, 2, 1000, "File 1 of 2, a few seconds left"},
        Row{1, 11, 1100, "File 1 of 11, about 15 seconds left"},
        Row{1, 91, 1000, "File 1 of 91, about 90 seconds left"},
        Row{100, 1000, 30'000, "File 100 of 1000, about 5 minutes left"}})
    EXPECT_EQ(WorkText({row.Done, row.Of}, milliseconds(row.Milliseconds)), row.Text);
}

}  // namespace
}  // namespace rws
