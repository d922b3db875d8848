#include "editors/logic/home_bases.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"

namespace rws::test {
namespace {

std::string Texts(const std::vector<HomeBaseItem>& items) {
  std::vector<std::string> texts;
  for (const auto& item : items) texts.push_back(item.Text + "@" + item.Key);
  return Joined(texts);
}

/** Two default aircraft, two others, and the default base that a case starts from. */
struct HomeBases : testing::Test {
  std::vector<DogFightPlane> Table{{"Bf 109", "Bf-109", "R", false},
                                   {"B-17", "B-17D", "R", true},
                                   {"P-51", "P-51D", "R", false},
                                   {"Zero", "A6M2", "R", true}};
  BornPlace Base;
  CodePage Page;
};

TEST_F(HomeBases, ListsWhatTheBaseOffersAndTheRest) {
  const struct {
    std::vector<std::string> Planes;
    const char *Available, *Reserve;
  } cases[] = {
      {{}, "Bf 109@0 flt|P-51@2 flt", "B-17@1 flt|Zero@3 flt"},
      {{"a6m2", "P-51d"}, "Zero@0 flt|P-51@1 flt", "Bf 109@0 flt|B-17@1 flt"},
      {{"UFO", "B-17D", "b-17d"},
       "@0 flt|B-17@1 flt|B-17@2 flt",
       "Bf 109@0 flt|P-51@2 flt|Zero@3 flt"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Available);
    Base.Planes = c.Planes;
    const HomeBaseLists lists = FillHomeBase(Table, Base, Page);
    EXPECT_EQ(Texts(lists[kAvailable]), c.Available);
    EXPECT_EQ(Texts(lists[kReserve]), c.Reserve);
  }
}

TEST_F(HomeBases, MovesAircraftAndForgetsTheDefault) {
  const struct {
    std::vector<std::string> Planes;
    HomeBaseList From;
    std::vector<std::string_view> Names;
    const char* Rebuilt;
    bool IsDefault;
  } cases[] = {
      {{}, kReserve, {"Zero"}, "Bf-109|P-51D|A6M2", false},
      {{}, kAvailable, {"Bf 109"}, "P-51D", false},
      {{}, kAvailable, {"P-51", "Bf 109"}, "", true},
      {{"p-51d", "A6M2"}, kReserve, {"B-17"}, "B-17D|P-51D|A6M2", false},
      {{"P-51D", "A6M2", "Bf-109"}, kAvailable, {"Zero"}, "Bf-109|P-51D", true},
      {{"UFO", "A6M2"}, kAvailable, {""}, "A6M2", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.Rebuilt) + " by " + std::string(c.Names[0]));
    Base.Planes = c.Planes;
    FillHomeBase(Table, Base, Page);
    MoveAircraft(Table, Base, c.From, c.Names);
    EXPECT_EQ(Joined(Base.Planes), c.Rebuilt);
    EraseIfDefault(Table, Base, FillHomeBase(Table, Base, Page)[kAvailable]);
    EXPECT_EQ(Joined(Base.Planes), c.IsDefault ? "" : c.Rebuilt);
  }
  Base.Planes = {"P-51D"};
  std::vector<DogFightPlane> missing;
  MoveAircraft(missing, Base, kAvailable, {""});
  EXPECT_EQ(Joined(Base.Planes), "P-51D") << "no table, no loss";
}

TEST_F(HomeBases, MovesAircraftAmongKeptLines) {
  const struct {
    std::vector<std::string> Planes;
    HomeBaseList From;
    std::vector<std::string_view> Names;
    const char* Left;
  } cases[] = {
      {{"UFO", "a6m2", "BF-109"}, kReserve, {"B-17"}, "UFO|a6m2|BF-109|B-17D"},
      {{"UFO", "a6m2", "BF-109"}, kAvailable, {"Zero"}, "UFO|BF-109"},
      {{"UFO", "a6m2"}, kAvailable, {"UFO"}, "a6m2"},
      {{}, kReserve, {"Zero"}, "Bf-109|P-51D|A6M2"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Left);
    Base.Planes = c.Planes;
    MoveKeptAircraft(Table, Base, c.From, c.Names);
    EXPECT_EQ(Joined(Base.Planes), c.Left);
  }
}

}  // namespace
}  // namespace rws::test
