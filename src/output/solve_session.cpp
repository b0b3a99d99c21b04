#include "output/solve_session.h"

#include <exception>
#include <new>

namespace kavit {

namespace {

// Runs a step of the solve; what it throws becomes the report's fault.
template <typename Step>
bool Guarded(SolveReport& report, const Step& step) {
    try {
        step();
        return true;
    } catch (const std::bad_alloc&) {
        report.Fault = "Insuficient Memory";
    } catch (const std::exception& fault) {
        report.Fault = fault.what();
    }
    return false;
}

}  // namespace

SolveReport SolveSession::Run(const SolveRequest& request, SolveObserver& observer) {
    observer_ = &observer;
    SolveReport report;
    report.Request = request;
    report.Sizes = solver_.AppliedSizes();
    Start(request);
    if (Guarded(report, [&] { Search(report); })) {
        if (report.Code == Result::Ok) (void)Guarded(report, [&] { Improve(report); });
        if (Guarded(report, [&] { Assemble(report); }) && report.Code == Result::Ok)
            (void)Guarded(report, [&] { SeekFewest(report); });
    }
    watch_.Finish(clock_.Now());
    Conclude(report);
    observer_ = nullptr;
    return report;
}

bool SolveSession::RequestStop() noexcept {
    const bool first = !asked_.exchange(true);
    SolverHooks::RequestStop(StopCause::User);
    return first;
}

void SolveSession::Start(const SolveRequest& request) {
    StopSea = StopCause::No;
    // In this order: a request between the two lines is not lost.
    if (asked_) SolverHooks::RequestStop(StopCause::User);
    catalogue_ = {};
    meter_ = {};
    side_ = ' ';
    searched_ = request.Options.SeaType;
    started_ = Clock::now();
    nextTick_ = 1;
    nextProgress_ = kProgressSeconds;
    left_ = kPositionsPerLook;
    (void)watch_.Start(clock_.Now(), request.MaxTime);
}

void SolveSession::ShowSide(char side) {
    side_ = side;
    observer_->ShowSide(side);
}

void SolveSession::ShowMsg(Result message) {
    observer_->ShowMsg(message, catalogue_.ShowMsg(message, ReadValues(solver_, StopSea)));
}

void SolveSession::Look() {
    left_ = kPositionsPerLook;
    const double now = std::chrono::duration<double>(Clock::now() - started_).count();
    if (now >= nextTick_) {
        nextTick_ += 1;
        (void)watch_.Tick(clock_.Now(), *this);
    }
    if (now >= nextProgress_) {
        nextProgress_ = now + kProgressSeconds;
        observer_->ShowProgress(meter_.Read(solver_, searched_, side_, now));
    }
}

void SolveSession::Search(SolveReport& report) {
    report.Code = solver_.AnalyseBoard(report.Request.Level, report.Request.Options);
    if (report.Code == Result::Ok) report.Code = solver_.Search(*this);
    report.LastMsg = report.Code == Result::Ok ? Result::Solution : report.Code;
    if (report.Code == Result::Stopped) report.Cause = StopSea;
    if (report.Code == Result::OutOfMemory) report.Cause = StopCause::Memory;

    const SearchCounters& counters = solver_.Counters();
    if (report.Code == Result::Ok || report.Cause != StopCause::No)
        report.PushesLowerBound = counters.ForwLevelCnt + counters.BackLevelCnt + 1;
}

void SolveSession::Improve(SolveReport& report) {
    if (report.Request.Options.OptLevel < OptLevel::SomethingMore) return;
    switch (solver_.OptimizeMoves(*this)) {
        case Result::OutOfMemory:
            report.Cause = StopCause::Memory;
            report.LastMsg = Result::OutOfMemoryWithSolution;
            break;
        case Result::Stopped:
            report.Cause = StopSea;
            report.LastMsg = Result::StoppedWithSolution;
            break;
        default:
            report.LastMsg = Result::BestSolution;
    }
}

void SolveSession::Assemble(SolveReport& report) {
    if (!solver_.Kept(0)) return;
    solver_.BuildSolutions();
    report.Kept = {solver_.Kept(0), solver_.Kept(1)};
    report.PushesProved = report.Kept[1]->SolPushes == report.PushesLowerBound;
    if (report.Code == Result::Stopped) report.LastMsg = Result::StoppedWithSolution;
}

// Every solution stands, so only the way it ended can change what is said of the solve.
void SolveSession::SeekFewest(SolveReport& report) {
    if (report.Request.Options.OptLevel < OptLevel::FewestOfAll) return;
    if (report.Cause != StopCause::No && report.Cause != StopCause::Memory) return;
    const Result result = solver_.FewestMoves(*this);
    report.Kept[0] = solver_.Kept(0);
    report.MovesLowerBound = solver_.Counters().MovesLowerBound;
    report.FewestMovesProved = solver_.Counters().FewestMovesProved;
    if (result == Result::OutOfMemory) {
        report.Cause = StopCause::Memory;
        report.LastMsg = Result::OutOfMemoryWithSolution;
    } else if (result == Result::Stopped) {
        report.Cause = StopSea;
        report.LastMsg = Result::StoppedWithSolution;
    }
}

void SolveSession::Conclude(SolveReport& report) {
    report.Counters = solver_.Counters();
    report.MovesProved = report.HasSolution() && report.Counters.MovesProved;
    report.SeaStart = watch_.SeaStart();
    report.LastTick = watch_.LastTick();
    report.Lines = MessageCatalogue().ShowMsg(report.LastMsg, ReadValues(report));
}

}  // namespace kavit
