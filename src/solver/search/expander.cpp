#include "solver/search/expander.h"

#include <algorithm>
#include <cassert>

#include "solver/search/store_pos.h"
#include "solver/store/machine.h"

namespace kavit {

namespace {

// How many offers ahead places in the table are fetched, and rows after them.
constexpr int kSlotsAhead = 64;
constexpr int kRowsAhead = 24;

// Goes along an offer's path to what it may equal, and fetches that row.
template <typename Table>
void Peek(const PositionStore& store, const Table& table, Offer& offer) {
    const std::int32_t pos = table.Candidate(offer);
    if (pos != 0) store.PrefetchRow(pos);
}

// The next position of the run on an offer's path that may have its key; 0 at its end.
template <typename Table>
std::int32_t CandidateIn(const Table& table, Offer& offer, LayerRun run) {
    for (;;) {
        const std::int32_t pos = table.Candidate(offer);
        if (pos == 0 || (pos >= run.Top && pos <= run.End)) return pos;
        table.Pass(offer);
    }
}

// Keeps two distances ahead of the offer in hand: memory that is asked for at the first has come
// at the second, where `peek` is called.
template <typename Table, typename PeekAt>
class LookAhead {
  public:
    LookAhead(const Table& table, OfferChunk& chunk, PeekAt peek)
        : table_(table), chunk_(chunk), peek_(peek) {
        for (int i = 0; i < std::min(kSlotsAhead, chunk.Count()); ++i) table.Prefetch(chunk.At(i));
        for (int i = 0; i < std::min(kRowsAhead, chunk.Count()); ++i) peek(chunk.At(i));
    }
    // Before offer i is looked at.
    void Reach(int i) {
        if (i + kSlotsAhead < chunk_.Count()) table_.Prefetch(chunk_.At(i + kSlotsAhead));
        if (i + kRowsAhead < chunk_.Count()) peek_(chunk_.At(i + kRowsAhead));
    }

  private:
    const Table& table_;
    OfferChunk& chunk_;
    PeekAt peek_;
};

// Ends a job however it is left.
class JobGuard {
  public:
    JobGuard(OfferMaker& maker, ChunkRing& ring, const ExpandJob& job) : ring_(ring) {
        maker.SetJob(job);
        ring.Begin();
    }
    ~JobGuard() { ring_.End(); }
    JobGuard(const JobGuard&) = delete;
    JobGuard& operator=(const JobGuard&) = delete;

  private:
    ChunkRing& ring_;
};

int ThreadsOf(const SolverOptions& options) {
    return options.Threads > 0 ? options.Threads : AvailableThreads("");
}

}  // namespace

Expander::Expander(SearchState& state)
    : state_(state),
      grid_(state.Arrays),
      walks_(MakeManWalks(grid_, state.Store.KeyLength() - 1)),
      maker_(state.Store, grid_),
      ring_(maker_, {ThreadsOf(state.Options), state.WorthThreads}) {
    state.Counters.Threads = ThreadsOf(state.Options);
}

Result Expander::Expand(const ExpandJob& job) {
    assert(job.Side == kForwTag || job.Side == kBackTag);
    const JobGuard guard(maker_, ring_, job);
    for (int slot = ring_.Next(); slot != ChunkRing::kNone; slot = ring_.Next()) {
        const Result result = StoreChunk(maker_.In(slot), job);
        if (result != Result::GoOn) return result;
    }
    return Result::GoOn;
}

Result Expander::OfferStart(const StartOffer& start) {
    OfferChunk& chunk = maker_.MakeStart(state_.Arrays, start);
    assert(chunk.Count() == 1);
    return state_.Store.WithTable([&](const auto& table) {
        return StorePos(state_, table, chunk.At(0), chunk.KeyOf(0), -1, start.Tag, *walks_);
    });
}

Result Expander::StoreChunk(OfferChunk& chunk, const ExpandJob& job) {
    return state_.Store.WithTable([&](const auto& table) {
        LookAhead ahead(table, chunk, [&](Offer& offer) { Peek(state_.Store, table, offer); });
        for (const ParentRun& run : chunk.Parents()) {
            assert(run.First <= run.End && run.End <= chunk.Count());
            state_.Hooks->Yield();
            if (state_.Hooks->Stopping()) return Result::Stopped;
            for (int i = run.First; i < run.End; ++i) {
                ahead.Reach(i);
                const Result result = StorePos(state_, table, chunk.At(i), chunk.KeyOf(i), run.Pos,
                                               job.Side, *walks_);
                if (result != Result::GoOn) return result;
            }
            if (run.Made || !state_.Store.OnPath(run.Pos)) continue;
            // It has come onto a path since the chunk was made.
            OfferChunk& late = maker_.MakeOne(run.Pos, job.Side);
            assert(&late != &chunk);
            for (int i = 0; i < late.Count(); ++i) {
                const Result result =
                    StorePos(state_, table, late.At(i), late.KeyOf(i), run.Pos, job.Side, *walks_);
                if (result != Result::GoOn) return result;
            }
        }
        return Result::GoOn;
    });
}

bool Expander::FindLinks(const std::vector<std::int32_t>& positions, std::uint8_t side,
                         LayerRun run, std::vector<Link>& links) {
    if (positions.empty()) return true;
    assert(run.Top >= 1 && run.Top <= run.End && run.End <= state_.Counters.BucketCnt);
    const auto last = static_cast<std::int32_t>(positions.size()) - 1;
    const JobGuard guard(maker_, ring_, {.Side = side, .End = last, .List = &positions});
    std::size_t near = 0;
    for (int slot = ring_.Next(); slot != ChunkRing::kNone; slot = ring_.Next()) {
        OfferChunk& chunk = maker_.In(slot);
        for (std::size_t i = 0; i < chunk.Parents().size(); ++i) {
            state_.Hooks->Yield();
            if (state_.Hooks->Stopping()) return false;
        }
        state_.Store.WithTable(
            [&](const auto& table) { LookUp(table, chunk, side, run, near, links); });
        near += chunk.Parents().size();
    }
    assert(near == positions.size());
    return true;
}

template <typename Table>
void Expander::LookUp(const Table& table, OfferChunk& chunk, std::uint8_t side, LayerRun run,
                      std::size_t near, std::vector<Link>& links) const {
    LookAhead ahead(table, chunk, [&](Offer& offer) {
        const std::int32_t pos = CandidateIn(table, offer, run);
        if (pos != 0) state_.Store.PrefetchRow(pos);
    });
    for (const ParentRun& parent : chunk.Parents()) {
        for (int i = parent.First; i < parent.End; ++i) {
            ahead.Reach(i);
            Offer& offer = chunk.At(i);
            std::int32_t far = CandidateIn(table, offer, run);
            while (far != 0 && !state_.Store.HasKey(far, chunk.KeyOf(i))) {
                table.Pass(offer);
                far = CandidateIn(table, offer, run);
            }
            if (far == 0) continue;
            const bool push = side == kForwTag;
            links.push_back({static_cast<std::int32_t>(near), far, push ? offer.Beside : offer.Man,
                             push ? offer.Man : offer.Beside});
        }
        ++near;
    }
}

}  // namespace kavit
