// One frame of the map, by how many objects the mission has, beside 100 flights of 10 points: while
// it is moved and while it is zoomed. Against a bare painter that draws a small point for each in a
// picture of the same size.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <random>

#include "map/forms/map_backing.h"
#include "map/forms/map_painter.h"

namespace rws::bench {
namespace {

constexpr int kWidth = 1400, kHeight = 900, kFlights = 100, kPoints = 10;
constexpr double kMapSize = 200'000;

/** As in large missions, most of what there is stands close together. */
MapModel ModelOf(int objects) {
  std::mt19937 random(1946);
  const auto within = [&](double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
  };
  MapModel model;
  MapPoint place;
  for (int i = 0; i < objects; ++i) {
    constexpr int kTogether = 40;
    if (i % kTogether == 0) place = {within(0, kMapSize), within(0, kMapSize)};
    MapObject object;
    object.At = {place.X + within(-2000, 2000), place.Y + within(-2000, 2000)};
    object.Kind = static_cast<ObjectKind>(random() % kObjectKinds);
    object.Army = static_cast<std::uint8_t>(random() % 3);
    object.Heading = static_cast<float>(within(0, 360));
    model.Scene.Things.Objects.push_back(object);
  }
  for (int i = 0; i < kFlights; ++i) {
    MapRoute& route = model.Scene.Routes.emplace_back();
    route.Flight = static_cast<std::size_t>(i);
    route.Army = static_cast<std::uint8_t>(1 + i % 2);
    route.Name = "r0100";
    for (int k = 0; k < kPoints; ++k) {
      RoutePoint& point = route.Points.emplace_back();
      point.At = {within(0, kMapSize), within(0, kMapSize)};
      point.Speed = 300;
    }
    model.Clocks.push_back(ClockOf(route));
  }
  model.Grid = ObjectGrid(model.Scene.Things.Objects);
  model.Bounds.Add({0, 0});
  model.Bounds.Add({kMapSize, kMapSize});
  return model;
}

struct World {
  explicit World(int objects) : Model(ModelOf(objects)) {
    Shown.Model = &Model;
    Shown.Projection = FitInto({{}, 100, kWidth, kHeight}, Model.Bounds, 20);
    Shown.Selection = {0, {1}, {}};
    Shown.Minute = 10;
  }

  void Frame() {
    QPainter painter(&Screen);
    painter.drawImage(QPoint(), Backing.Picture(Shown, 1));
    PaintMapTop(painter, Shown);
  }

  MapModel Model;
  MapShown Shown;
  MapBacking Backing;
  QImage Screen{kWidth, kHeight, QImage::Format_RGB32};
};

/** Goes a few pixels each frame, there and back. */
void Pan(benchmark::State& state) {
  World world(static_cast<int>(state.range(0)));
  int step = 0;
  for (auto _ : state) {
    const double way = ++step / 50 % 2 ? -7 : 7;
    world.Shown.Projection = Panned(world.Shown.Projection, way, way);
    world.Frame();
  }
}
BENCHMARK(Pan)->Arg(14'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/** From all of the mission to a tenth of it and back. */
void Zoom(benchmark::State& state) {
  World world(static_cast<int>(state.range(0)));
  constexpr int kSteps = 20;
  int step = 0;
  for (auto _ : state) {
    const double factor = std::pow(10, (step++ / kSteps % 2 ? -1.0 : 1.0) / kSteps);
    world.Shown.Projection = ZoomedAt(world.Shown.Projection, {400, 300}, factor);
    world.Frame();
  }
}
BENCHMARK(Zoom)->Arg(14'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/** All of the mission at a scale that was not seen before: the most that there is to paint. */
void WholeMission(benchmark::State& state) {
  World world(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    world.Backing.Forget();
    world.Frame();
  }
}
BENCHMARK(WholeMission)->Arg(14'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void BarePoints(benchmark::State& state) {
  const World world(static_cast<int>(state.range(0)));
  constexpr double kPointSize = 4;
  QImage screen(kWidth, kHeight, QImage::Format_RGB32);
  for (auto _ : state) {
    screen.fill(Qt::white);
    QPainter painter(&screen);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::red);
    const auto draw = [&](MapPoint point) {
      const ScreenPoint at = world.Shown.Projection.ToScreen(point);
      painter.drawEllipse(QPointF(at.X, at.Y), kPointSize / 2, kPointSize / 2);
    };
    for (const auto& object : world.Model.Scene.Things.Objects) draw(object.At);
    for (const auto& route : world.Model.Scene.Routes)
      for (const auto& point : route.Points) draw(point.At);
  }
}
BENCHMARK(BarePoints)->Arg(14'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/** The least that a point can cost: a square of pixels that is filled. */
void BareSquares(benchmark::State& state) {
  const World world(static_cast<int>(state.range(0)));
  constexpr int kSize = 4;
  QImage screen(kWidth, kHeight, QImage::Format_RGB32);
  for (auto _ : state) {
    screen.fill(Qt::white);
    QPainter painter(&screen);
    const auto draw = [&](MapPoint point) {
      const ScreenPoint at = world.Shown.Projection.ToScreen(point);
      painter.fillRect(int(at.X) - kSize / 2, int(at.Y) - kSize / 2, kSize, kSize, Qt::red);
    };
    for (const auto& object : world.Model.Scene.Things.Objects) draw(object.At);
    for (const auto& route : world.Model.Scene.Routes)
      for (const auto& point : route.Points) draw(point.At);
  }
}
BENCHMARK(BareSquares)->Arg(14'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rws::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
