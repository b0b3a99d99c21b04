#include "solver/moves/prove_moves.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <new>
#include <span>

#include "solver/search/meeting.h"

namespace kavit {

namespace {

constexpr int kUnknown = std::numeric_limits<int>::max();

// The positions at one distance from the start, and the pushes from them to the next layer.
struct Layer {
    LayerRun Run;                     // where the store holds them
    std::vector<std::int32_t> Nodes;  // increasing
    std::vector<Link> Pushes;         // Near: index into Nodes; Far: index into the next layer's
    std::vector<int> Cost;            // of each push: its own move and the fewest to the end
};

// Groups links by one of their ends, keeping their order within a group (counting sort).
class Grouping {
  public:
    template <typename EndOf>
    void Make(const std::vector<Link>& links, std::size_t groups, EndOf endOf) {
        begin_.assign(groups + 1, 0);
        for (const Link& link : links) begin_[static_cast<std::size_t>(endOf(link)) + 1] += 1;
        for (std::size_t i = 1; i < begin_.size(); ++i) begin_[i] += begin_[i - 1];
        assert(static_cast<std::size_t>(begin_.back()) == links.size());
        order_.resize(links.size());
        std::vector<std::int32_t>& at = fill_;
        at.assign(begin_.begin(), begin_.end());
        for (std::size_t i = 0; i < links.size(); ++i)
            order_[static_cast<std::size_t>(at[static_cast<std::size_t>(endOf(links[i]))]++)] =
                static_cast<std::int32_t>(i);
    }
    [[nodiscard]] std::span<const std::int32_t> Of(std::size_t group) const {
        assert(group + 1 < begin_.size());
        const auto first = static_cast<std::size_t>(begin_[group]);
        return {order_.data() + first, static_cast<std::size_t>(begin_[group + 1]) - first};
    }

  private:
    std::vector<std::int32_t> begin_;
    std::vector<std::int32_t> order_;
    std::vector<std::int32_t> fill_;
};

// Position index -> number in its layer, by a table as large as the layer's links need.
class Numbering {
  public:
    // Numbers the far ends of the links by increasing position, and replaces each by its number.
    void Apply(std::vector<Link>& links, std::vector<std::int32_t>& nodes) {
        std::size_t size = 16;
        while (size < 2 * links.size()) size *= 2;
        mask_ = size - 1;
        slots_.assign(size, {0, 0});
        nodes.clear();
        for (const Link& link : links)
            if (Slot(link.Far).Pos == 0) {
                Slot(link.Far).Pos = link.Far;
                nodes.push_back(link.Far);
            }
        assert(nodes.size() <= slots_.size() / 2);  // a free slot ends every path
        std::sort(nodes.begin(), nodes.end());
        for (std::size_t i = 0; i < nodes.size(); ++i)
            Slot(nodes[i]).Number = static_cast<std::int32_t>(i);
        for (Link& link : links) link.Far = Slot(link.Far).Number;
    }

  private:
    struct Entry {
        std::int32_t Pos;
        std::int32_t Number;
    };
    Entry& Slot(std::int32_t pos) {
        assert(pos >= 1 && (slots_.size() & mask_) == 0);
        auto i = static_cast<std::size_t>(static_cast<std::uint32_t>(pos) * 2654435761U) & mask_;
        while (slots_[i].Pos != 0 && slots_[i].Pos != pos) i = (i + 1) & mask_;
        return slots_[i];
    }
    std::vector<Entry> slots_;
    std::size_t mask_ = 0;
};

class Proof {
  public:
    Proof(SearchState& state, Expander& expander) : state_(state), expander_(expander) {
        const SearchCounters& counters = state.Counters;
        // The forward side ends where the last step began, when it was the one to make it.
        const std::int64_t forwLast = counters.ForwDepth - (counters.LastSide == 1 ? 1 : 0);
        middle_ = static_cast<std::size_t>(forwLast);
        const std::int64_t pushes = counters.ForwDepth + counters.BackDepth;
        assert(0 <= forwLast && forwLast < pushes);
        layers_.resize(static_cast<std::size_t>(pushes) + 1);
        for (std::int64_t i = 0; i <= pushes; ++i) {
            layers_[static_cast<std::size_t>(i)].Run =
                i <= forwLast ? LayerTables::Get(state.Layers.ForwTopEnd, i + 1, 1)
                              : LayerTables::Get(state.Layers.BackTopEnd, pushes - i + 1, 1);
        }
    }

    Result Run() {
        if (!FindMiddle() || !FindForwardHalf() || !FindBackwardHalf()) return Result::Stopped;
        if (!SpreadHome()) return Result::Stopped;
        Conclude();
        return Result::GoOn;
    }

  private:
    // Links of all nodes of a layer to the layer that holds `run`, with far ends as positions.
    bool Links(const Layer& from, std::uint8_t side, LayerRun run, std::vector<Link>& links) {
        assert(run.Top >= 1 && run.Top <= run.End && !from.Nodes.empty());
        assert(std::is_sorted(from.Nodes.begin(), from.Nodes.end()));
        links.clear();
        return expander_.FindLinks(from.Nodes, side, run, links);
    }
    // Pulls go from a layer to the one before: turns them into that layer's pushes.
    static void TurnAround(std::vector<Link>& links) {
        for (Link& link : links) std::swap(link.Near, link.Far);
    }

    bool FindMiddle() {
        std::vector<std::int32_t> ends = state_.MeetParents;
        std::sort(ends.begin(), ends.end());
        ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
        assert(!ends.empty() && ends.front() >= 1);
        Layer& first = layers_[middle_];
        Layer& second = layers_[middle_ + 1];
        const bool forward = state_.Counters.LastSide == 1;
        (forward ? first : second).Nodes = std::move(ends);
        if (forward) {
            if (!Links(first, kForwTag, second.Run, first.Pushes)) return false;
            numbering_.Apply(first.Pushes, second.Nodes);
        } else {
            if (!Links(second, kBackTag, first.Run, first.Pushes)) return false;
            numbering_.Apply(first.Pushes, first.Nodes);
            TurnAround(first.Pushes);
        }
        return true;
    }
    bool FindForwardHalf() {
        for (std::size_t i = middle_; i > 0; --i) {
            Layer& before = layers_[i - 1];
            if (!Links(layers_[i], kBackTag, before.Run, before.Pushes)) return false;
            numbering_.Apply(before.Pushes, before.Nodes);
            TurnAround(before.Pushes);
        }
        return true;
    }
    bool FindBackwardHalf() {
        for (std::size_t i = middle_ + 1; i + 1 < layers_.size(); ++i) {
            if (!Links(layers_[i], kForwTag, layers_[i + 1].Run, layers_[i].Pushes)) return false;
            numbering_.Apply(layers_[i].Pushes, layers_[i + 1].Nodes);
        }
        return true;
    }

    // From the last layer to the first: the cost of every push, from those of the pushes behind it.
    bool SpreadHome() {
        Grouping in;
        Grouping out;
        for (std::size_t i = layers_.size() - 1; i > 0; --i) {
            Layer& before = layers_[i - 1];
            const Layer& layer = layers_[i];
            if (state_.Hooks->Stopping()) return false;
            before.Cost.assign(before.Pushes.size(), 1);
            if (i + 1 == layers_.size()) continue;  // solved: nothing is left to do
            in.Make(before.Pushes, layer.Nodes.size(), [](const Link& link) { return link.Far; });
            out.Make(layer.Pushes, layer.Nodes.size(), [](const Link& link) { return link.Near; });
            for (std::size_t node = 0; node < layer.Nodes.size(); ++node) {
                SpreadNode(layer, node, out.Of(node), before, in.Of(node));
                state_.Hooks->Yield();
            }
        }
        return true;
    }
    void SpreadNode(const Layer& layer, std::size_t node, std::span<const std::int32_t> out,
                    Layer& before, std::span<const std::int32_t> in) {
        assert(node < layer.Nodes.size() && before.Cost.size() == before.Pushes.size());
        // A position that pulls reached from the middle always goes on; one that the middle's
        // pushes reached does so too, or the store would not hold it on the backward side.
        sources_.clear();
        for (const std::int32_t push : out)
            sources_.push_back({layer.Pushes[static_cast<std::size_t>(push)].Stand,
                                layer.Cost[static_cast<std::size_t>(push)]});
        targets_.clear();
        for (const std::int32_t push : in)
            targets_.push_back({before.Pushes[static_cast<std::size_t>(push)].End, 0});
        if (sources_.empty())
            throw SolverFault("Internal error: a position on a shortest path leads nowhere");
        expander_.Walks().SpreadCosts(state_.Store.KeyAt(layer.Nodes[node]), sources_, targets_);
        assert(targets_.size() == in.size());
        for (std::size_t k = 0; k < in.size(); ++k)
            before.Cost[static_cast<std::size_t>(in[k])] += targets_[k].Cost;
    }

    // Follows the cheapest pushes from the start.
    void Conclude() {
        assert(layers_.front().Nodes.size() == 1 && layers_.front().Nodes.front() == 1);
        std::vector<std::int32_t> steps = {0};
        std::uint8_t man = state_.Arrays.KeyByte(state_.Arrays.ManStart);
        std::int32_t node = 0;
        int moves = kUnknown;
        for (std::size_t i = 0; i + 1 < layers_.size(); ++i) {
            const Layer& layer = layers_[i];
            const std::uint8_t* key =
                state_.Store.KeyAt(layer.Nodes.at(static_cast<std::size_t>(node)));
            int least = kUnknown;
            std::size_t best = 0;
            for (std::size_t push = 0; push < layer.Pushes.size(); ++push) {
                if (layer.Pushes[push].Near != node || layer.Cost[push] >= least) continue;
                const int cost =
                    layer.Cost[push] + expander_.Walks().Walk(key, man, layer.Pushes[push].Stand);
                if (cost >= least) continue;
                least = cost;
                best = push;
            }
            assert(least < kUnknown && (i == 0 || least < moves));
            if (i == 0) moves = least;
            man = layer.Pushes.at(best).End;
            node = layer.Pushes[best].Far;
            steps.push_back(layers_[i + 1].Nodes.at(static_cast<std::size_t>(node)));
        }
        steps.push_back(-1);
        const KeptSolution& kept = *state_.Kept[1];
        if (moves > kept.SolMoves || static_cast<int>(steps.size()) - 2 != kept.SolPushes)
            throw SolverFault("Internal error: the proof of the fewest moves missed a solution");
        if (KeepIfBetter(state_, moves, steps)) state_.Hooks->ShowMsg(Result::BestSoFar);
        state_.Counters.MovesProved = true;
    }

    SearchState& state_;
    Expander& expander_;
    std::size_t middle_ = 0;  // the last layer of the forward side
    std::vector<Layer> layers_;
    Numbering numbering_;
    std::vector<ManCost> sources_;
    std::vector<ManCost> targets_;
};

}  // namespace

Result ProveMoves(SearchState& state, Expander& expander) {
    try {
        return Proof(state, expander).Run();
    } catch (const std::bad_alloc&) {
        return Result::OutOfMemory;
    }
}

}  // namespace kavit
