#include "solver/search/recount.h"

#include <gtest/gtest.h>

#include "solver/search/expander.h"
#include "solver/search/search.h"
#include "support/levels.h"

namespace kavit {
namespace {

// A search that has ended, and its second forward level, made out of the first.
struct Ended {
    Ended() : State(MachineMemory()) {
        State.Batch.Reserve(8);
        EXPECT_TRUE(State.Store.Resize(5000, 8));
        State.Hooks = &Hooks;
        const Board board = test::BoardOf("########\n#. $  .#\n# $ @  #\n#      #\n########");
        InitSearchCounters(State);
        EXPECT_EQ(AnalyseBoard(board, 8, State.Arrays), Result::Ok);
        State.Store.Clear(State.Arrays.NumBoxes, HashCase::Default);
        EXPECT_EQ(Search(State, *MakeExpander(State)), Result::Ok);
        Parents = LayerTables::Get(State.Layers.ForwTopEnd, 2, 1);
        Made = LayerTables::Get(State.Layers.ForwTopEnd, 3, 1);
    }
    void Recount() const {
        RecountLayer(State, kForwTag, Parents, Made);
        RecountStore(State);
    }
    PosRecord Record() const { return State.Store.Record(Made.Top); }
    template <typename Change>
    void Alter(Change change) {
        PosRecord record = Record();
        change(record);
        State.Store.SetRecord(Made.Top, record);
    }

    SolverHooks Hooks;
    SearchState State;
    LayerRun Parents;
    LayerRun Made;
};

TEST(Recount, SeesWhatDoesNotFit) {
    EXPECT_NO_THROW(Ended().Recount());
    Ended stopped;  // before the backward start was stored: the run before stands for its level
    LayerTables::Run(stopped.State.Layers.BackTopEnd, 1, 1) = {1, 1};
    EXPECT_NO_THROW(stopped.Recount());
    const struct {
        const char* Name;
        void (*Spoil)(Ended&);
    } cases[] = {
        {"side", [](Ended& e) { e.Alter([](PosRecord& r) { r.Tag = kBackTag; }); }},
        {"parent", [](Ended& e) { e.Alter([&e](PosRecord& r) { r.Parent = e.Made.Top; }); }},
        {"moves",
         [](Ended& e) {
             e.Alter([&e](PosRecord& r) { r.Moves = e.State.Store.Record(r.Parent).Moves; });
         }},
        {"box",
         [](Ended& e) {
             const PositionStore& store = e.State.Store;
             const std::vector<std::uint8_t> key(store.KeyAt(e.Record().Parent),
                                                 store.KeyAt(e.Record().Parent) + 16);
             e.State.Store.Append(e.Made.Top, e.Record(), key.data());
         }},
        {"lost slot",
         [](Ended& e) {
             for (int i = 0; i < e.State.Store.HashSize(); ++i) {
                 std::uint32_t& slot = e.State.Store.Slots()[i];
                 if (static_cast<int>(slot & e.State.Store.IndexMask()) == e.Made.Top) slot = 0;
             }
         }},
        {"slot of no position",
         [](Ended& e) {
             e.State.Store.Slots()[e.State.Store.HashSize()] =
                 static_cast<std::uint32_t>(e.State.Counters.BucketCnt + 1);
         }},
        {"slot twice",
         [](Ended& e) {
             std::uint32_t* slots = e.State.Store.Slots();
             int empty = 0;
             while (slots[empty] != 0) ++empty;
             slots[empty] = static_cast<std::uint32_t>(e.Made.Top);
         }},
        {"count", [](Ended& e) { e.State.Counters.BucketCnt += 1; }},
        {"levels that overlap",
         [](Ended& e) { LayerTables::Run(e.State.Layers.ForwTopEnd, 2, 1).End += 1; }},
        {"level of the other side",
         [](Ended& e) {
             LayerTables::Run(e.State.Layers.BackTopEnd, 9, 1) = e.Made;
             LayerTables::Run(e.State.Layers.ForwTopEnd, 3, 1) = {};
         }},
    };
    for (const auto& c : cases) {
        Ended ended;
        ASSERT_GT(ended.Made.Top, 0);
        c.Spoil(ended);
        EXPECT_THROW(ended.Recount(), SolverFault) << c.Name;
    }
}

}  // namespace
}  // namespace kavit
