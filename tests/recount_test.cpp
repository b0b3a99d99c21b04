#include "solver/search/recount.h"

#include <gtest/gtest.h>

#include "solver/search/expander.h"
#include "solver/search/search.h"
#include "support/levels.h"

namespace kavit {
namespace {

// A search that has ended, and its second forward level, made out of the first.
struct Ended {
    explicit Ended(HashCase hashCase = HashCase::Default) : State(MachineMemory()) {
        EXPECT_TRUE(State.Store.Resize(5000, 8));
        State.Hooks = &Hooks;
        const Board board = test::BoardOf("########\n#. $  .#\n# $ @  #\n#      #\n########");
        InitSearchCounters(State);
        EXPECT_EQ(AnalyseBoard(board, 8, State.Arrays), Result::Ok);
        State.Store.Clear(State.Arrays.NumBoxes, hashCase);
        Expander expander(State);
        EXPECT_EQ(Search(State, expander), Result::Ok);
        Parents = LayerTables::Get(State.Layers.ForwTopEnd, 2, 1);
        Made = LayerTables::Get(State.Layers.ForwTopEnd, 3, 1);
    }
    void Recount() const {
        RecountLayer(State, kForwTag, Parents, Made);
        RecountStore(State);
    }
    PosRecord Record() const { return State.Store.Record(Made.Top); }
    // Puts a position into the hash table once more.
    void Put(std::int32_t pos) const {
        State.Store.WithTable([pos](const auto& table) {
            Offer offer;
            const std::uint8_t key[16] = {1, 2, 3};
            table.Home(offer, key);
            while (table.Candidate(offer) != 0) table.Pass(offer);
            table.Insert(offer, pos);
        });
    }
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
        {"not found by its key",
         [](Ended& e) {
             const PositionStore& store = e.State.Store;
             std::vector<std::uint8_t> key(store.KeyAt(e.Made.Top), store.KeyAt(e.Made.Top) + 16);
             key.at(static_cast<std::size_t>(store.KeyLength()) - 1) = 255;
             e.State.Store.Append(e.Made.Top, e.Record(), key.data());
         }},
        {"in the table and never stored",
         [](Ended& e) { e.Put(static_cast<std::int32_t>(e.State.Counters.BucketCnt) + 1); }},
        {"in the table twice", [](Ended& e) { e.Put(e.Made.Top); }},
        {"count", [](Ended& e) { e.State.Counters.BucketCnt += 1; }},
        {"levels that overlap",
         [](Ended& e) { LayerTables::Run(e.State.Layers.ForwTopEnd, 2, 1).End += 1; }},
        {"level of the other side",
         [](Ended& e) {
             LayerTables::Run(e.State.Layers.BackTopEnd, 9, 1) = e.Made;
             LayerTables::Run(e.State.Layers.ForwTopEnd, 3, 1) = {};
         }},
    };
    for (const HashCase hashCase : {HashCase::Default, HashCase::Mixed}) {
        EXPECT_NO_THROW(Ended(hashCase).Recount());
        for (const auto& c : cases) {
            Ended ended(hashCase);
            ASSERT_GT(ended.Made.Top, 0);
            c.Spoil(ended);
            EXPECT_THROW(ended.Recount(), SolverFault) << c.Name;
        }
    }
}

}  // namespace
}  // namespace kavit
