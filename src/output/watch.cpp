#include "output/watch.h"

#include <cmath>
#include <ctime>

#include "output/number_text.h"

namespace kavit {

namespace {

constexpr int kTicksPerRefresh = 10;

double TimeOfDay() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(now);
    const double fraction =
        duration<double>(now - system_clock::from_time_t(seconds)).count();  // below 1
    std::tm local{};
    localtime_r(&seconds, &local);
    return local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec + fraction;
}

}  // namespace

DayClock::DayClock() : atStart_(TimeOfDay()), start_(std::chrono::steady_clock::now()) {}

double DayClock::Now() const {
    const std::chrono::duration<double> run = std::chrono::steady_clock::now() - start_;
    return std::fmod(atStart_ + run.count(), kSecondsPerDay);
}

std::string SolveWatch::Start(double clock, std::int64_t maxTime) {
    seaStart_ = clock;
    lastTick_ = clock;
    maxTime_ = maxTime;
    return Caption();
}

std::string SolveWatch::Tick(double clock, SolverHooks& hooks) {
    if (++tickCnt_ >= kTicksPerRefresh) {
        tickCnt_ = 0;
        hooks.RefreshDue = true;
    }
    TakeTime(clock);
    if (Elapsed() >= maxTime_) hooks.RequestStop(StopCause::Time);
    return Caption();
}

std::int64_t SolveWatch::Elapsed() const {
    return std::llrint(lastTick_ - seaStart_);
}

void SolveWatch::TakeTime(double clock) {
    while (clock < lastTick_) clock += kSecondsPerDay;
    lastTick_ = clock;
}

std::string SolveWatch::Caption() const {
    return B(Elapsed()) + "/" + B(maxTime_);
}

}  // namespace kavit
