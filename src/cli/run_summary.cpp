#include "cli/run_summary.h"

#include <algorithm>
#include <cstdio>
#include <functional>

#include "cli/exit_status.h"
#include "level/shown_text.h"
#include "output/number_text.h"

namespace kavit {

namespace {

constexpr std::size_t kSlowest = 5;
constexpr double kWorthNaming = 0.1;
// In the order of the text.
constexpr std::pair<const char*, const char*> kStatusTexts[] = {
    {"solved", "solved"},           {"refused", "refused"},
    {"no-solution", "no solution"}, {"out-of-memory", "out of memory"},
    {"stopped", "stopped"},         {"not-readable", "not readable"},
    {"fault", "internal errors"}};

std::string Seconds(double seconds) {
    char text[64];
    std::snprintf(text, sizeof text, "%.1f s", seconds);
    return text;
}

}  // namespace

void RunSummary::Add(const LevelReport& report) {
    levels_ += 1;
    const std::string status = StatusWord(report.Solve);
    byStatus_[status] += 1;
    if (status == "refused") refused_[report.Kind] += 1;
    const double seconds = report.Solve.LastTick - report.Solve.SeaStart;
    if (seconds < kWorthNaming) return;
    slowest_.emplace_back(seconds, report.Name);
    std::sort(slowest_.rbegin(), slowest_.rend());
    if (slowest_.size() > kSlowest) slowest_.pop_back();
}

std::vector<std::string> RunSummary::Lines(double seconds) const {
    if (levels_ < 2) return {};
    std::string counts = B(levels_) + " levels in " + Seconds(seconds) + ":";
    const char* separator = " ";
    for (const auto& [status, words] : kStatusTexts) {
        const auto found = byStatus_.find(status);
        if (found == byStatus_.end()) continue;
        counts += separator + B(found->second) + " " + words;
        separator = ", ";
        if (found->first != "refused") continue;
        std::string reasons;
        for (const auto& [reason, count] : refused_)
            reasons += (reasons.empty() ? "" : ", ") + B(count) + " " + reason;
        counts += " (" + reasons + ")";
    }
    std::string slowest;
    for (const auto& [took, name] : slowest_)
        slowest += (slowest.empty() ? "slowest: " : ", ") + ShownText(name) + " " + Seconds(took);
    return slowest.empty() ? std::vector{counts} : std::vector{counts, slowest};
}

}  // namespace kavit
