#include "app/model/solve_control.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "level/refusal.h"
#include "level/steps.h"
#include "level/transform.h"
#include "output/closing_block.h"
#include "output/number_text.h"
#include "solver/store/store_size.h"

namespace kavit {
namespace {

// Layers of both sides, the size of the present one, pace, memory, and what is proved; of the parts
// that come after the search, what there is.
std::string DetailsOf(const SolveProgress& p) {
    const auto bytes =
        static_cast<std::uint64_t>(p.BytesPerPosition * static_cast<double>(p.Positions));
    const std::string pace =
        B(std::llrint(p.OffersPerSecond / 1000) * 1000) + " offers/s; " + BytesText(bytes);
    if (p.SeaPhase == 3) return pace + "; at least " + B(p.MovesLower) + " moves";
    const std::string layers = "layers " + B(p.ForwLayers) + " + " + B(p.BackLayers);
    if (p.SeaPhase == 2) return "improving moves, " + layers + "; " + pace;
    std::string text = layers + ", this one " + B(p.LayerSize) + "; " + pace;
    text += "; at least " + B(p.PushesLower) + " pushes";
    if (p.PushesReach) text += "; memory reaches to about " + B(*p.PushesReach);
    return text;
}

// What is wrong with a board that was refused, by row and column.
std::string ReasonOf(const SolveReport& report) {
    std::string text;
    for (const Refusal& refusal : WhyRefused(report.Request.Level))
        text += (text.empty() ? "" : "; ") + refusal.Text;
    return text;
}

}  // namespace

void SolveControl::StartFrom(const Board& board, Purpose purpose, Then then) {
    OpenLevel& level = levels_.Level();
    if (level.Bad) return;
    solution_.Forget();
    SolveRequest request;
    request.Level = board;
    // A shift leaves it where the man stood before.
    if (const auto man = FindMan(board)) request.Level.ManPos = static_cast<std::int16_t>(*man);
    if (purpose == Purpose::Level) level.Board.ManPos = request.Level.ManPos;
    purpose_ = purpose;
    then_ = std::move(then);
    desk_.Fire(Event::SolveAsked);
    desk_.ShowBoard(board);
    begun_ = clock_();

    // What the report needs is taken now: nothing of it can change while the solve runs.
    request.Options = choices_.Options();
    if (purpose == Purpose::Probe) request.Options.OptLevel = OptLevel::None;
    request.MaxTime = settings_.Values().Fields.MaxTime;
    request.LevelName = level.Name();
    request.BoardImported = level.Built() || purpose != Purpose::Level;
    request.BoardMoved = level.Moved();
    request.HideExpert = choices_.HideExpert();
    session_.ForgetStop();
    desk_.Window().StartSearch(session_, request);
}

// The search tells of itself at once, so the first thing heard of it means that the board was
// taken.
void SolveControl::Begun() {
    if (desk_.Now() != State::Checking) return;
    desk_.Fire(Event::SearchBegun);
    desk_.Screen.Title = "Solving " + levels_.Level().Name();
    if (purpose_ != Purpose::Probe) desk_.ShowMsg(Result::Ok);
    desk_.ClearLabels();
    ShowElapsed();
}

void SolveControl::Stop() {
    (void)session_.RequestStop();
}

void SolveControl::LeaveOutOfMemory() {
    desk_.Fire(Event::MemoryLeft);
    desk_.ClearLabels();
    desk_.ShowMsg(Result::LevelOpened);
}

void SolveControl::WatchTick() {
    if (IsSolving(desk_.Now())) ShowElapsed();
}

void SolveControl::ShowElapsed() {
    desk_.Screen.Timer =
        B(std::llrint(clock_() - begun_)) + "/" + B(settings_.Values().Fields.MaxTime);
}

void SolveControl::SearchSaid(const MessageLines& lines) {
    Begun();
    if (purpose_ != Purpose::Probe) desk_.PutLines(lines);
}

void SolveControl::SearchCame(const SolveProgress& progress) {
    desk_.Screen.Progress = progress.Positions;
    desk_.Screen.Debug = "Pos.Count = " + B(progress.Positions);
    desk_.Screen.Details = DetailsOf(progress);
}

void SolveControl::SideChanged(char side) {
    Begun();
    if (!choices_.HideExpert()) desk_.Screen.Side = std::string(1, side);
}

void SolveControl::SearchEnded(const SolveReport& report) {
    const Then then = std::exchange(then_, nullptr);
    if (!report.Refused()) Begun();
    ShowElapsed();
    desk_.SetTitle(levels_.Level().Name());
    if (purpose_ == Purpose::Probe) {
        desk_.Fire(Event::EndedWithout);
    } else {
        ShowEnd(report);
    }
    if (then) return then(report);
    if (!IsSolving(desk_.Now())) OnEnded(report);
}

void SolveControl::ShowEnd(const SolveReport& report) {
    desk_.PutLines(report.Lines);
    ShowFigures(report);
    if (report.HasSolution()) {
        desk_.Fire(Event::SolutionFound);
        desk_.Screen.Details.clear();  // what it came to says more than how it was going
        desk_.Screen.Progress = report.Counters.BucketCnt;
        desk_.Screen.Debug = "Pos.Count = " + B(report.Counters.BucketCnt) +
                             (report.MovesProved ? "; fewest moves proved" : "");
        solution_.Take(report, levels_.Folder(), purpose_ == Purpose::Level);
        // Space plays now; a button with the focus would take it.
        if (!desk_.Screen.SolvingAll) desk_.Window().Focus(Place::Board);
        if (!report.Fault.empty())
            desk_.Say(report.Fault);  // what the search found holds all the same
        return;
    }
    if (!report.Fault.empty()) {  // the search can't go on, but the program can
        desk_.Fire(Event::EndedWithout);
        desk_.ShowMsg(Result::Ok);
        return desk_.Say(report.Fault);
    }
    if (report.Refused()) {
        desk_.Fire(Event::CheckFailed);
        desk_.ClearLabels();
        desk_.Screen.Debug = ReasonOf(report);
        if (report.Code == Result::TooManyBoxes && MayOffer()) OfferBlocks(report.Request.Level);
        return;
    }
    desk_.Screen.Progress = report.Counters.BucketCnt;
    desk_.Screen.Debug = "Pos.Count = " + B(report.Counters.BucketCnt);
    const bool full = report.Code == Result::OutOfMemory;
    desk_.Fire(full ? Event::MemoryRanOut : Event::EndedWithout);
    if (full && MayOffer()) OfferMemory();
}

// Larger sizes are offered for a level that the user solves, and for nothing that is asked on the
// way.
bool SolveControl::MayOffer() const {
    return purpose_ == Purpose::Level && !desk_.Screen.SolvingAll;
}

// The box limit is a size like the others: who has a level with more may go on at once.
void SolveControl::OfferBlocks(const Board& level) {
    const auto boxes = std::count_if(level.Cell.begin(), level.Cell.end(), HoldsBox);
    Sizes sizes = settings_.Values().Fields;
    if (desk_.Window().Ask("This level has " + B(boxes) + " boxes, Blocks allows " +
                               B(sizes.Blocks) + ". Raise Blocks and solve it?",
                           Choices::YesNo) != Choice::Yes) {
        return;
    }
    sizes.Blocks = boxes;
    if (settings_.Apply(sizes)) Start();
}

void SolveControl::OfferMemory() {
    Sizes sizes = settings_.Values().Fields;
    const std::int64_t most = settings_.MostPositions();
    const std::string had = "All " + B(sizes.NumPos) + " positions are used up. ";
    if (most < sizes.NumPos + sizes.NumPos / 4) {
        return desk_.Say(had + "This machine can hold " + B(most) + ".");
    }
    if (desk_.Window().Ask(had + "This machine can hold " + B(most) + ", which take " +
                               BytesText(BytesFor(most, sizes.Blocks)) + ". Try again with that?",
                           Choices::YesNo) != Choice::Yes) {
        return;
    }
    sizes.NumPos = most;
    if (!settings_.Apply(sizes)) return;
    desk_.Fire(Event::MemoryLeft);
    Start();
}

// The solver keeps its layers until the next search.
void SolveControl::ShowFigures(const SolveReport& report) {
    desk_.Screen.Closing =
        report.Refused() ? "" : ClosingBlock(report.Counters, settings_.Values().Fields.NumPos);
    const auto sizes = [](const LayerTables::Table& table) {
        std::vector<std::int64_t> positions;
        for (std::size_t layer = 1; layer < table.size(); ++layer) {
            std::int64_t count = 0;
            for (const LayerRun& run : table[layer])
                if (run.Top != 0) count += run.End - run.Top + 1;
            positions.push_back(count);
        }
        while (!positions.empty() && positions.back() == 0) positions.pop_back();
        return positions;
    };
    desk_.Screen.ForwLayers = sizes(solver_.Layers().ForwTopEnd);
    desk_.Screen.BackLayers = sizes(solver_.Layers().BackTopEnd);
}

}  // namespace kavit
