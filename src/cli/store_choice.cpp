#include "cli/store_choice.h"

#include <algorithm>

#include "output/number_text.h"
#include "solver/store/store_size.h"

namespace kavit {

namespace {

constexpr int kUsualBlocks = 8;

}  // namespace

StoreChoice ChooseStore(const Options& options, int boxes, std::uint64_t available) {
    StoreChoice choice;
    choice.Fields.MaxTime = options.MaxTime;
    // Not less than usual, so that most levels of a run share one store.
    choice.Fields.Blocks = options.Blocks.value_or(std::max(boxes, kUsualBlocks));
    const std::uint64_t most = MostStoreBytes(available);
    if (!options.Memory) {
        choice.Fields.NumPos = options.MaxPositions.value_or(choice.Fields.NumPos);
        choice.Bytes = BytesFor(choice.Fields.NumPos, choice.Fields.Blocks);
        if (choice.Bytes > most)
            choice.Wrong = "Insuficient Memory: " + StoreText(choice, available);
        return choice;
    }
    const MemoryChoice& memory = *options.Memory;
    const std::uint64_t wanted =
        memory.Percent > 0
            ? std::min(most, available / 100 * static_cast<std::uint64_t>(memory.Percent))
            : memory.Bytes;
    choice.Fields.NumPos = PositionsFor(wanted, choice.Fields.Blocks);
    if (wanted > most) {
        choice.Wrong = "Insuficient Memory: " + BytesText(wanted) +
                       " were asked for; this machine can give " + BytesText(most);
    } else if (choice.Fields.NumPos < 1) {
        choice.Wrong = "--memory: " + BytesText(wanted) + " have no room for a position";
        choice.Usage = true;
    } else {
        choice.Bytes = BytesFor(choice.Fields.NumPos, choice.Fields.Blocks);
    }
    return choice;
}

std::string StoreText(const StoreChoice& choice, std::uint64_t available) {
    return B(choice.Fields.NumPos) + " positions of up to " + B(choice.Fields.Blocks) +
           " boxes take " + BytesText(choice.Bytes) + "; this machine can give " +
           BytesText(MostStoreBytes(available));
}

std::string FullStoreText(const StoreChoice& choice, std::uint64_t available) {
    const std::string text = "The store is full: " + StoreText(choice, available);
    return choice.Bytes * 2 > MostStoreBytes(available) ? text : text + " (--memory 90%)";
}

}  // namespace kavit
