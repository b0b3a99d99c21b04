#include "output/progress.h"

#include <algorithm>
#include <cmath>

namespace kavit {

namespace {

constexpr double kSecondsPerMark = 1;
constexpr std::size_t kLayersOfGrowth = 4;  // the last ones decide, the first ones are special
constexpr double kSmallestLayer = 1000;     // below it growth says nothing
constexpr int kMostLayers = 10000;

// By how much a layer is larger than the one before it; 0 where that cannot be said.
double Growth(const std::vector<double>& layers) {
    const std::size_t steps = std::min(kLayersOfGrowth, layers.size() - 1);
    if (steps < 2 || layers.back() < kSmallestLayer) return 0;
    const double first = layers[layers.size() - 1 - steps];
    return std::pow(layers.back() / first, 1.0 / static_cast<double>(steps));
}

// The layers of a side up to the one that is expanded next or just now.
std::vector<double> LayerSizes(const LayerTables::Table& table) {
    std::vector<double> sizes;
    for (std::int64_t layer = 1;; ++layer) {
        const LayerRun run = LayerTables::Get(table, layer, 1);
        if (run.Top == 0) return sizes;
        sizes.push_back(run.End - run.Top + 1.0);
    }
}

}  // namespace

std::optional<std::int64_t> GuessReach(std::vector<double> forward, std::vector<double> backward,
                                       double room, SeaType side) {
    if (forward.empty() || backward.empty()) return std::nullopt;
    const double forwGrowth = Growth(forward);
    const double backGrowth = Growth(backward);
    auto pushes = static_cast<std::int64_t>(forward.size() + backward.size()) - 1;
    for (int step = 0; step < kMostLayers; ++step) {
        const bool back = side == SeaType::Backward ||
                          (side == SeaType::Both && forward.back() >= backward.back());
        const double growth = back ? backGrowth : forwGrowth;
        if (growth <= 1) return std::nullopt;
        double& layer = back ? backward.back() : forward.back();
        layer *= growth;
        room -= layer;
        if (room < 0) return pushes;
        pushes += 1;
    }
    return std::nullopt;
}

SolveProgress ProgressMeter::Read(const Solver& solver, SeaType searched, char side,
                                  double seconds) {
    const SearchCounters& counters = solver.Counters();
    const bool search = counters.SeaPhase < 2;
    // A step counts its side's depth when it begins, and SeaSteps when it ends.
    const bool running = counters.ForwDepth + counters.BackDepth > counters.SeaSteps;
    SolveProgress progress;
    progress.Seconds = seconds;
    progress.SeaPhase = counters.SeaPhase;
    progress.Side = side;
    progress.ForwLayers = counters.ForwDepth - (running && side == '1' ? 1 : 0);
    progress.BackLayers = counters.BackDepth - (running && side == '2' ? 1 : 0);
    progress.Positions = counters.BucketCnt;
    progress.NumPos = solver.AppliedSizes().NumPos;
    progress.Offers = counters.HashCnt;
    progress.BytesPerPosition = counters.BytesPerPosition;
    progress.PushesLower = counters.PushesLowerBound;
    if (counters.FewestOffers > 0) {
        progress.SeaPhase = 3;
        progress.Positions = counters.FewestPositions;
        progress.Offers = counters.FewestOffers;
        progress.MovesLower = counters.MovesLowerBound;
    } else if (!search) {
        progress.ForwLayers = counters.ForwLevel;
        progress.BackLayers = counters.BackLevel;
    } else {
        std::vector<double> forward = LayerSizes(solver.Layers().ForwTopEnd);
        std::vector<double> backward = LayerSizes(solver.Layers().BackTopEnd);
        double room = static_cast<double>(progress.NumPos);
        for (const auto* layers : {&forward, &backward})
            for (const double size : *layers) room -= size;
        const std::vector<double>& now = side == '2' ? backward : forward;
        if (!now.empty()) progress.LayerSize = std::llround(now.back());
        progress.PushesReach = GuessReach(std::move(forward), std::move(backward), room, searched);
    }

    if (progress.Offers < current_.Offers) last_ = current_ = {seconds, 0};  // of another phase
    if (seconds - current_.Seconds >= kSecondsPerMark) {
        last_ = current_;
        current_ = {seconds, progress.Offers};
    }
    if (seconds > last_.Seconds) {
        progress.OffersPerSecond =
            static_cast<double>(progress.Offers - last_.Offers) / (seconds - last_.Seconds);
    }
    return progress;
}

}  // namespace kavit
