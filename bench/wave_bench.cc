// Frames of the waves of a long run: a million instants of a module of some 500 signals, scrolled
// in time, over the rows, and zoomed. Runs without a screen.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QScrollBar>
#include <algorithm>
#include <chrono>
#include <random>
#include <utility>
#include <vector>

#include "SIMULATOR_ZUC/scope/wave_view.h"
#include "bench/long_run.h"

namespace {

constexpr long instants = 1'000'000;

class LongWaves {
 public:
  LongWaves() {
    simulation_ = kiva::bench::generated_simulation(700, 100);
    time_ = std::make_unique<kiva::TimeControl>(simulation_.get(), [] { return nullptr; });
    kiva::bench::run_at_random(time_->recording(), *simulation_, instants);
    view_ = std::make_unique<kiva::WaveView>(time_.get());
    view_->show_made(true);
    view_->resize(1180, 700);
    view_->show();
    picture_ = QImage(view_->size(), QImage::Format_RGB32);
  }
  kiva::WaveView& view() { return *view_; }
  void draw() {
    const auto before = std::chrono::steady_clock::now();
    view_->render(&picture_);
    const std::chrono::duration<double, std::milli> took =
        std::chrono::steady_clock::now() - before;
    frames_.push_back(took.count());
  }
  /// Milliseconds of the frames since the last call, in order of size.
  std::vector<double> frames() {
    std::ranges::sort(frames_);
    return std::exchange(frames_, {});
  }

 private:
  std::unique_ptr<kiva::Simulation> simulation_;
  std::unique_ptr<kiva::TimeControl> time_;
  std::unique_ptr<kiva::WaveView> view_;
  QImage picture_;
  std::vector<double> frames_;
};

std::unique_ptr<LongWaves> all;  // ends before the application does

LongWaves& waves() {
  return *all;
}

void end(benchmark::State& state) {
  state.counters["rows"] = static_cast<double>(waves().view().rows().size());
  state.counters["frames"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  const std::vector<double> frames = waves().frames();
  state.counters["median ms"] = frames[frames.size() / 2];
  state.counters["worst ms"] = frames.back();
}

/// A frame a step, so many columns on.
void scroll_in_time(benchmark::State& state) {
  QScrollBar* bar = waves().view().horizontalScrollBar();
  bar->setValue(bar->maximum() / 2);
  for (auto _ : state) {
    bar->setValue(bar->value() - static_cast<int>(state.range(0)));
    waves().draw();
  }
  end(state);
}

void jump(benchmark::State& state) {
  QScrollBar* bar = waves().view().horizontalScrollBar();
  std::mt19937 random(2);
  for (auto _ : state) {
    bar->setValue(static_cast<int>(random() % static_cast<unsigned>(bar->maximum())));
    waves().draw();
  }
  end(state);
}

void scroll_rows(benchmark::State& state) {
  QScrollBar* bar = waves().view().verticalScrollBar();
  int step = bar->singleStep();
  for (auto _ : state) {
    if (bar->value() + step > bar->maximum() || bar->value() + step < 0) step = -step;
    bar->setValue(bar->value() + step);
    waves().draw();
  }
  end(state);
}

/// At a pixel an instant.
void scroll_far_out(benchmark::State& state) {
  waves().view().zoom(1.0 / 96);
  scroll_in_time(state);
  waves().view().zoom(32);
}

BENCHMARK(scroll_in_time)->Arg(1)->Arg(16)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(jump)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(scroll_rows)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(scroll_far_out)->Arg(16)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  all = std::make_unique<LongWaves>();
  benchmark::RunSpecifiedBenchmarks();
  all.reset();
}
