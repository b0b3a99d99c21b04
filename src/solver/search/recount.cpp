#include "solver/search/recount.h"

#include <algorithm>
#include <string>
#include <vector>

namespace kavit {

namespace {

void Require(bool holds, const char* what, std::int64_t pos) {
    if (holds) return;
    throw SolverFault("Internal error: position " + std::to_string(pos) + " " + what);
}

std::vector<std::uint8_t> SortedBoxes(const PositionStore& store, std::int32_t pos) {
    const auto key = store.Key(pos);
    std::vector<std::uint8_t> boxes(key.begin(), key.end() - 1);
    std::sort(boxes.begin(), boxes.end());
    return boxes;
}

bool OneBoxMoved(const PositionStore& store, std::int32_t from, std::int32_t to) {
    const std::vector<std::uint8_t> before = SortedBoxes(store, from);
    const std::vector<std::uint8_t> after = SortedBoxes(store, to);
    std::vector<std::uint8_t> same;
    std::set_intersection(before.begin(), before.end(), after.begin(), after.end(),
                          std::back_inserter(same));
    return same.size() + 1 == after.size();
}

// The positions of a run are marked; none may be marked already.
void MarkRun(const SearchState& state, LayerRun run, std::uint8_t side, std::vector<bool>& marked) {
    if (run.Top == 0) return;
    Require(run.Top <= run.End && run.End <= state.Counters.BucketCnt, "begins no run", run.Top);
    for (std::int32_t pos = run.Top; pos <= run.End; ++pos) {
        Require(!marked[static_cast<std::size_t>(pos)], "is in two levels", pos);
        Require(state.Store.Record(pos).Side() == side, "is in a level of the other side", pos);
        marked[static_cast<std::size_t>(pos)] = true;
    }
}

}  // namespace

void RecountLayer(const SearchState& state, std::uint8_t side, LayerRun parents, LayerRun made) {
    if (made.Top == 0) return;
    const PositionStore& store = state.Store;
    for (std::int32_t pos = made.Top; pos <= made.End; ++pos) {
        const PosRecord record = store.Record(pos);
        Require(record.Side() == side, "is of the other side", pos);
        Require(record.Parent >= parents.Top && record.Parent <= parents.End,
                "has a parent in another level", pos);
        Require(record.Moves > store.Record(record.Parent).Moves, "needs no more moves", pos);
        Require(OneBoxMoved(store, record.Parent, pos), "is not one push away", pos);
        Require(store.FoundByItsKey(pos), "is not found by its key", pos);
    }
}

void RecountStore(const SearchState& state) {
    const PositionStore& store = state.Store;
    const std::int64_t count = state.Counters.BucketCnt;
    std::vector<bool> held(static_cast<std::size_t>(count) + 1);
    std::int64_t found = 0;
    store.WithTable([&](const auto& table) {
        for (std::int64_t place = 0; place < table.Places(); ++place) {
            const std::int32_t pos = table.PlaceAt(place);
            if (pos == 0) continue;
            Require(pos >= 1 && pos <= count, "is in the table and was never stored", pos);
            Require(!held[static_cast<std::size_t>(pos)], "is in the table twice", pos);
            held[static_cast<std::size_t>(pos)] = true;
            ++found;
        }
    });
    Require(found == count, "is missing in the table, or one before it", count);

    // A start position that did not fit, or was stopped, leaves its level with the one before it.
    if (LayerTables::Get(state.Layers.ForwTopEnd, 1, 1).Top ==
        LayerTables::Get(state.Layers.BackTopEnd, 1, 1).Top)
        return;
    std::vector<bool> marked(static_cast<std::size_t>(count) + 1);
    for (const auto& levels : state.Layers.ForwTopEnd) MarkRun(state, levels[0], kForwTag, marked);
    for (const auto& levels : state.Layers.BackTopEnd) MarkRun(state, levels[0], kBackTag, marked);
}

}  // namespace kavit
