#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "level/result.h"
#include "solver/search/chunk_ring.h"
#include "solver/search/man_walks.h"
#include "solver/search/offer_maker.h"
#include "solver/search/search_state.h"

namespace kavit {

// A push between two positions, seen from the one whose moves were generated.
struct Link {
    std::int32_t Near = 0;   // index into the list of positions that was asked for
    std::int32_t Far = 0;    // the stored position at the other end of the push
    std::uint8_t Stand = 0;  // where the man stands before the push, in key numbering
    std::uint8_t End = 0;    // and where after it
};

// Expands positions of the level in state.Arrays, whose store has been cleared for it: has their
// offers made (offer_maker.h) and stores or looks them up in order. Whatever a caller can see, the
// hooks included, happens on his thread.
class Expander {
  public:
    explicit Expander(SearchState& state);

    // Offers every successor of the job's positions, in order. GoOn when all are done, else what
    // ended it.
    [[nodiscard]] Result Expand(const ExpandJob& job);
    // Offers a start position; its parent is -1.
    [[nodiscard]] Result OfferStart(const StartOffer& start);
    // All pushes out of the given positions (side kForwTag), or into them (kBackTag), whose other
    // end is stored in the run; grouped by position, in their order. Counts nothing. False when
    // StopSea was set.
    [[nodiscard]] bool FindLinks(const std::vector<std::int32_t>& positions, std::uint8_t side,
                                 LayerRun run, std::vector<Link>& links);
    [[nodiscard]] ManWalks& Walks() { return *walks_; }
    // No thread is left when it returns; the next large job starts them again.
    void EndThreads() noexcept { ring_.EndThreads(); }

  private:
    [[nodiscard]] Result StoreChunk(OfferChunk& chunk, const ExpandJob& job);
    template <typename Table>
    void LookUp(const Table& table, OfferChunk& chunk, std::uint8_t side, LayerRun run,
                std::size_t near, std::vector<Link>& links) const;

    SearchState& state_;
    Grid grid_;
    std::unique_ptr<ManWalks> walks_;
    OfferMaker maker_;
    ChunkRing ring_;
};

}  // namespace kavit
