// Frames of the waves of a long run: a million instants of a module of some 500 signals, scrolled
// in time, over the rows, and zoomed. Runs without a screen.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QScrollBar>
#include <filesystem>
#include <fstream>
#include <random>

#include "SIMULATOR_ZUC/scope/wave_view.h"
#include "bench/module_text.h"
#include "tarn/zuc/zuc_reader.h"

namespace {

constexpr long instants = 1'000'000;

class LongWaves {
 public:
  LongWaves() {
    const std::string file = std::filesystem::temp_directory_path() / "kiva_wave_bench.zuc";
    std::ofstream(file) << kiva::bench::generated_module(700, 100);
    simulation_ = std::make_unique<kiva::Simulation>(kiva::read_zuc_file(file, "", "").module);
    time_ = std::make_unique<kiva::TimeControl>(simulation_.get(), [] { return nullptr; });
    std::mt19937 random(1);
    time_->recording().run(
        instants, nullptr,
        [&] {
          const unsigned bits = random();
          for (size_t row = 0; row < simulation_->input_rows().size(); ++row)
            simulation_->choose_input(row, (bits >> (row % 32) & 1) != 0 ? kiva::SignalState::one
                                                                         : kiva::SignalState::zero);
        },
        nullptr, nullptr);
    view_ = std::make_unique<kiva::WaveView>(time_.get());
    view_->show_made(true);
    view_->resize(1180, 700);
    view_->show();
    picture_ = QImage(view_->size(), QImage::Format_RGB32);
  }
  kiva::WaveView& view() { return *view_; }
  void draw() { view_->render(&picture_); }

 private:
  std::unique_ptr<kiva::Simulation> simulation_;
  std::unique_ptr<kiva::TimeControl> time_;
  std::unique_ptr<kiva::WaveView> view_;
  QImage picture_;
};

LongWaves& waves() {
  static LongWaves all;
  return all;
}

void end(benchmark::State& state) {
  state.counters["rows"] = static_cast<double>(waves().view().rows().size());
  state.counters["frames"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
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
  benchmark::RunSpecifiedBenchmarks();
}
