#pragma once

#include <gtest/gtest.h>

#include <initializer_list>

#include "map/map_texts.h"
#include "tests/support/doubles.h"

namespace rws::test {

/** Two flights at noon, which meet head on at the sixth minute, and one without a clock. */
struct Flights : testing::Test {
  Flights() {
    Add("r0100", 1, {{0, 0}, {60'000, 0}}, 300);
    Add("g0100", 2, {{60'000, 400}, {0, 400}}, 300);
    Add("g0101", 2, {{0, -20'000}, {9000, -20'000}}, 0);
    Model.Time = "12";
  }
  void Add(const char* name, std::uint8_t army, std::initializer_list<MapPoint> places,
           double speed) {
    MapRoute& route = Model.Scene.Routes.emplace_back();
    route.Flight = Model.Scene.Routes.size() - 1;
    route.Name = name;
    route.Army = army;
    for (const auto& place : places) {
      RoutePoint& point = route.Points.emplace_back();
      point.At = place;
      point.Altitude = 1000.0 * double(route.Points.size());
      point.Speed = speed;
    }
    Model.Clocks.push_back(ClockOf(route));
  }

  MapModel Model;
  Mission Record;
  test::World World;
  MapTextSources From{Model, Record, World.Tables, World.Services, true};
};

}  // namespace rws::test
