#pragma once

#include <array>
#include <cassert>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// The plain values of the solver: what it is asked, how it is sized, what it counts and keeps.

namespace kavit {

// The effort for fewer man moves, on top of the fewest pushes.
enum class OptLevel : std::uint8_t { None, Something, SomethingMore, SomethingPlus, FewestOfAll };
enum class SeaType : std::uint8_t { Both, Forward, Backward };
// How a key finds its place in the hash table.
enum class HashCase : std::uint8_t { Default, Case1, Case2, Mixed };
// Why a search was ended from outside.
enum class StopCause : std::uint8_t { No, User, Time, Memory };

// What a solver holds, and so which calls it answers; the others throw (solver.h).
enum class SolverState : std::uint8_t {
    NoStore,              // no memory for positions
    Sized,                // a store, and no board, or one that was refused
    Analysed,             // a board that can be searched
    Solved,               // a search that found its solutions
    Optimized,            // and went through the optimizer, however that ended
    Lent,                 // its positions have made room for the search for the fewest moves
    StoppedWithSolution,  // a search that was stopped with solutions in hand
    Ended                 // a search that ended without one, or by a fault
};

// What the program cannot answer with a result number: a call out of order, a value that does not
// fit its field, or a solution that does not replay. what() is a sentence for the user. The solver
// can be used again after it.
class SolverFault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The sizes of the settings panel. Fields are wide so that anything that a user types arrives
// whole.
struct Sizes {
    std::int64_t NumPos = 4000000;  // positions that the store holds; 1..2147483647
    std::int64_t Blocks = 8;        // most boxes a level may have; 1..32767
    std::int64_t MaxTime = 300;     // seconds; 1..86400

    bool operator==(const Sizes&) const = default;
};

struct ApplyReply {
    bool Ok = true;            // false: refused, and Message says why; the old sizes stand
    bool Reallocated = false;  // the store was allocated anew, and is empty
    std::string_view Message;  // the text for the message box, "" when Ok
};

struct SolverOptions {
    kavit::OptLevel OptLevel = kavit::OptLevel::Something;
    kavit::SeaType SeaType = kavit::SeaType::Both;
    std::optional<kavit::HashCase> HashCase =
        std::nullopt;         // none: what suits the size of the store
    bool OptSpecial = false;  // counts from OptLevel SomethingMore on
    int Threads = 0;          // 0: as many as the process may use
};

// One of the two solutions kept: 0 has the fewest moves (then pushes), 1 the fewest pushes (then
// moves).
struct KeptSolution {
    int SolMoves = 0;
    int SolPushes = 0;
    int SolPhase = 0;                   // 1 found by the search, 2 by the optimizer
    std::int64_t SolFoundAt = 0;        // nSol when it was kept
    std::int64_t SolFoundAtSearch = 0;  // SolFoundAt when the optimizer started
    // Entry 1 onward: the position reached after each push; a negative entry ends the chain.
    // Entry 0 is not read.
    std::vector<std::int32_t> SolSteps = {};
    std::string SolString = {};  // "ldru" steps, "LDRU" pushes
};

struct SearchCounters {
    std::int64_t BucketCnt = 0;     // positions stored
    std::int64_t PosChanged = 0;    // duplicates whose record was improved
    std::int64_t PosDiscarded = 0;  // duplicates dropped because they were no better
    std::int64_t nSol = 0;          // meetings found by the last phase that ran
    std::int64_t nSolSearch = 0;    // meetings found by the search, when the optimizer has run
    std::int64_t HashCnt = 0;       // positions offered
    std::int64_t RHashCnt = 0;      // re-probes
    // No solution has fewer pushes: every layer expanded whole without a meeting proves one more.
    std::int64_t PushesLowerBound = 0;
    std::int64_t SeaSteps = 0;      // layers expanded by the search
    std::int64_t ForwDepth = 0;     // layers expanded forward ("Sea1")
    std::int64_t BackDepth = 0;     // layers expanded backward ("Sea2")
    std::int64_t ForwLevelCnt = 0;  // layers expanded whole when the search ended
    std::int64_t BackLevelCnt = 0;
    std::int64_t ForwLevel = 0;  // layers that the optimizer is at (messages 25 and 26)
    std::int64_t BackLevel = 0;
    int LastSide = 0;                // side of the last step: 1 forward, 2 backward
    std::int64_t OptimumPushes = 0;  // ForwLevelCnt + BackLevelCnt + 1, set by the optimizer
    int SeaPhase = 0;                // 0 none, 1 search, 2 optimizer
    std::int64_t HashSize = 0;       // slots of the hash table, less one
    kavit::HashCase HashCase = kavit::HashCase::Default;  // in force
    int Threads = 1;                                      // that expand positions
    bool SqCompact = false;                               // keys hold compact square numbers
    int NumBoxes = 0;
    double BytesPerPosition = 0;  // key, record and share of the hash table
    double SearchSeconds = 0;
    double PassSeconds = 0;    // optimizer pass
    double ProofSeconds = 0;   // proof of the fewest moves
    double FewestSeconds = 0;  // search for the fewest moves of all
    bool MovesProved = false;  // solution 1 has the fewest moves that its pushes allow
    // Of the search for the fewest moves of all.
    std::int64_t FewestPositions = 0;  // stored
    std::int64_t FewestOffers = 0;     // looked up
    std::int64_t MovesLowerBound = 0;  // no solution has fewer moves; 0: nothing is known
    bool FewestMovesProved = false;    // no solution has fewer moves than solution 0
};

// A position as the store holds it, its squares as cells of the board.
struct StoredPosition {
    int Tag = 0;              // 1 forward, 2 backward; 10 more on a path to a meeting
    std::int64_t Parent = 0;  // -1 at a start
    int Moves = 0;            // man moves from the side's start, pushes included
    int Man = 0;              // where he stands after the push
    std::vector<int> Boxes;   // increasing; 0 for a box without a name, which never moves
    int NormalisedMan = 0;    // stands for the region that he can reach
};

// A run of position indices; Top 0 means that it is empty.
struct LayerRun {
    std::int32_t Top = 0;
    std::int32_t End = 0;

    bool operator==(const LayerRun&) const = default;
};

// The layers of both sides: all positions at one distance from the start, or from the end. Each has
// two runs: slot 1 was stored by the search, slot 2 by the optimizer. Layer 1 holds the starts. The
// tables grow with the search; 250 layers are there from the beginning.
struct LayerTables {
    using Table = std::vector<std::array<LayerRun, 2>>;  // [layer][slot - 1]; layer 0 is not used
    Table ForwTopEnd;
    Table BackTopEnd;

    // The run of a layer, made when it is not there yet.
    static LayerRun& Run(Table& table, std::int64_t layer, int slot) {
        assert(layer >= 1 && (slot == 1 || slot == 2));
        const auto index = static_cast<std::size_t>(layer);
        if (table.size() <= index) table.resize(index + 1);
        return table[index][static_cast<std::size_t>(slot - 1)];
    }
    // The run of a layer, empty when the layer is not there.
    static LayerRun Get(const Table& table, std::int64_t layer, int slot) {
        assert(layer >= 1 && (slot == 1 || slot == 2));
        const auto index = static_cast<std::size_t>(layer);
        return index < table.size() ? table[index][static_cast<std::size_t>(slot - 1)] : LayerRun{};
    }
};

}  // namespace kavit
