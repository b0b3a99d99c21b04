#include "solver/store/offers.h"

#include <cassert>

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
    assert(keyStride_ >= static_cast<std::size_t>(store.KeyLength()) + 8);
    assert(keyStride_ * offers_.size() <= keys_.size());
    Empty();
}

void OfferBatch::Hash(const PositionStore& store) {
    store.WithTable([this](const auto& table) {
        int i = 0;
        for (; i + kHashLanes <= count_; i += kHashLanes) {
            table.HomeLanes(&At(i), KeyOf(i), keyStride_);
            for (int lane = 0; lane < kHashLanes; ++lane) table.Prefetch(At(i + lane));
        }
        for (; i < count_; ++i) {
            table.Home(At(i), KeyOf(i));
            table.Prefetch(At(i));
        }
    });
}

}  // namespace kavit
