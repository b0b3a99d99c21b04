#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "solver/solver.h"

// How far a running solve has come, in figures that mean something to who waits for it.
namespace kavit {

struct SolveProgress {
    double Seconds = 0;
    int SeaPhase = 0;             // 1 search, 2 moves pass and proof, 3 fewest moves of all
    char Side = ' ';              // of the last ShowSide
    std::int64_t ForwLayers = 0;  // complete layers: the layer k holds what takes k pushes
    std::int64_t BackLayers = 0;
    std::int64_t LayerSize = 0;  // positions of the layer that is being expanded
    std::int64_t Positions = 0;  // stored, of NumPos
    std::int64_t NumPos = 0;
    std::int64_t Offers = 0;
    double OffersPerSecond = 0;    // over the last second or two
    double BytesPerPosition = 0;   // times Positions: memory used
    std::int64_t PushesLower = 0;  // "at least": every complete layer without a meeting proves one
    std::int64_t MovesLower = 0;   // phase 3: moves that every solution needs
    // The number of pushes that the store will cover before it is full, if layers go on growing as
    // they did; none where they are too few or too small to say, or do not grow.
    std::optional<std::int64_t> PushesReach;
};

// That guess. Layers are given from the start layer on, the last of each side is not expanded yet;
// `room` is what the store still takes. The smaller side goes first, as in the search.
[[nodiscard]] std::optional<std::int64_t> GuessReach(std::vector<double> forward,
                                                     std::vector<double> backward, double room,
                                                     SeaType side);

// Reads a solver that is running, and measures its pace.
class ProgressMeter {
  public:
    [[nodiscard]] SolveProgress Read(const Solver& solver, SeaType searched, char side,
                                     double seconds);

  private:
    struct Mark {
        double Seconds = 0;
        std::int64_t Offers = 0;
    };
    Mark last_;     // at least a second old
    Mark current_;  // becomes the next one
};

}  // namespace kavit
