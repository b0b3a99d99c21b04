#include "solver/store/offers.h"

#include <algorithm>

namespace kavit {

namespace {

std::size_t KeyStride(int boxes) {
    return (static_cast<std::size_t>(boxes) + 1 + 15) / 8 * 8;
}

}  // namespace

void OfferBatch::Reserve(int boxes) {
    const std::size_t most = static_cast<std::size_t>(kFull) + 4 * static_cast<std::size_t>(boxes);
    offers_.assign(most, Offer{});
    keys_.assign(most * KeyStride(boxes) + 16, 0);
    parents_.reserve(kFull);
    Empty();
}

void OfferBatch::StartSearch(const PositionStore& store) {
    keyStride_ = KeyStride(store.KeyLength() - 1);
    Empty();
}

void OfferBatch::Hash(const PositionStore& store) {
    constexpr int kLanes = 8;  // the reductions of one key wait for each other; eight keys do not
    const int last = store.KeyLength() - 1;
    const std::uint32_t mult = store.HashMult();
    for (int first = 0; first < count_; first += kLanes) {
        const int lanes = std::min(kLanes, count_ - first);
        std::uint32_t h[kLanes] = {};
        const std::uint8_t* keys = KeyOf(first);
        if (lanes == kLanes) {
            for (int lane = 0; lane < kLanes; ++lane)
                h[lane] = keys[static_cast<std::size_t>(lane) * keyStride_ +
                               static_cast<std::size_t>(last)];
            for (int i = last - 1; i >= 0; --i)
                for (int lane = 0; lane < kLanes; ++lane)
                    h[lane] = store.Reduce(h[lane] * mult +
                                           keys[static_cast<std::size_t>(lane) * keyStride_ +
                                                static_cast<std::size_t>(i)]);
        } else {
            for (int lane = 0; lane < lanes; ++lane) h[lane] = store.HomeSlot(KeyOf(first + lane));
        }
        for (int lane = 0; lane < lanes; ++lane) {
            Offer& offer = At(first + lane);
            offer.Slot = static_cast<std::int32_t>(h[lane]);
            offer.Step = store.HashStep(KeyOf(first + lane));
            store.PrefetchSlots(offer.Slot);
        }
    }
}

void OfferBatch::Peek(const PositionStore& store, int i) {
    if (i >= count_) return;
    Offer& offer = At(i);
    const std::uint32_t* slots = store.Slots();
    const std::uint32_t print = store.Fingerprint(offer.Mix);
    for (;;) {
        const std::uint32_t slot = slots[offer.Slot];
        if (slot == 0) return;
        if (store.Fingerprint(slot) == print) {
            store.PrefetchRow(static_cast<std::int32_t>(slot & store.IndexMask()));
            return;
        }
        offer.Slot = store.NextSlot(offer.Slot, offer.Step);
        ++offer.Reprobes;
    }
}

void OfferBatch::PeekRun(const PositionStore& store, int i, LayerRun run) {
    if (i >= count_) return;
    const std::int32_t pos = NextCandidate(store, i, run);
    if (pos > 0) store.PrefetchRow(pos);
}

std::int32_t OfferBatch::Find(const PositionStore& store, int i, LayerRun run) {
    for (;;) {
        const std::int32_t pos = NextCandidate(store, i, run);
        if (pos == 0 || store.HasKey(pos, KeyOf(i))) return pos;
        Offer& offer = At(i);
        offer.Slot = store.NextSlot(offer.Slot, offer.Step);
    }
}

std::int32_t OfferBatch::NextCandidate(const PositionStore& store, int i, LayerRun run) {
    Offer& offer = At(i);
    const std::uint32_t print = store.Fingerprint(offer.Mix);
    for (;;) {
        const std::uint32_t slot = store.Slots()[offer.Slot];
        if (slot == 0) return 0;
        const auto pos = static_cast<std::int32_t>(slot & store.IndexMask());
        if (store.Fingerprint(slot) == print && pos >= run.Top && pos <= run.End) return pos;
        offer.Slot = store.NextSlot(offer.Slot, offer.Step);
    }
}

}  // namespace kavit
