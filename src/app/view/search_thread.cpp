#include "app/view/search_thread.h"

#include <QTimer>
#include <new>
#include <system_error>

namespace kavit {
namespace {

constexpr int kTellMs = 100;

SolveReport Run(SolveSession& session, const SolveRequest& request, SolveObserver& observer) {
    try {
        return session.Run(request, observer);
    } catch (const std::bad_alloc&) {
        SolveReport report;
        report.Request = request;
        report.Fault = "Insuficient Memory";
        return report;
    }
}

}  // namespace

SearchThread::~SearchThread() {
    if (session_ != nullptr) (void)session_->RequestStop();
    if (thread_.joinable()) thread_.join();
}

void SearchThread::Start(SolveSession& session, const SolveRequest& request) {
    session_ = &session;
    news_ = {};
    const auto search = [this, &session, request] {
        auto report = std::make_shared<SolveReport>(Run(session, request, *this));
        QMetaObject::invokeMethod(
            this,
            [this, report] {
                if (thread_.joinable()) thread_.join();
                session_ = nullptr;
                Tell();
                emit Ended(report);
            },
            Qt::QueuedConnection);
    };
    try {
        thread_ = std::thread(search);
    } catch (const std::system_error&) {
        search();  // a machine without threads: the window waits
    }
}

template <typename Change>
void SearchThread::Note(Change change) {
    const std::lock_guard lock(mutex_);
    change(news_);
    if (told_) return;
    told_ = true;
    QMetaObject::invokeMethod(this, &SearchThread::TellLater, Qt::QueuedConnection);
}

void SearchThread::ShowMsg(Result /*message*/, const MessageLines& lines) {
    Note([&](News& news) {
        if (!news.Lines) news.Lines.emplace();
        if (lines.Left) news.Lines->Left = lines.Left;
        if (lines.Right) news.Lines->Right = lines.Right;
    });
}

void SearchThread::ShowProgress(const SolveProgress& progress) {
    Note([&](News& news) { news.Progress = progress; });
}

void SearchThread::ShowSide(char side) {
    Note([&](News& news) { news.Side = side; });
}

// Tells what there is now, and what came meanwhile a tenth of a second later.
void SearchThread::TellLater() {
    Tell();
    QTimer::singleShot(kTellMs, this, [this] {
        bool more = false;
        {
            const std::lock_guard lock(mutex_);
            more = told_ = news_.Lines || news_.Progress || news_.Side;
        }
        if (more) TellLater();
    });
}

void SearchThread::Tell() {
    News news;
    {
        const std::lock_guard lock(mutex_);
        std::swap(news, news_);
    }
    if (news.Lines) emit Said(*news.Lines);
    if (news.Side) emit Side(*news.Side);
    if (news.Progress) emit Came(*news.Progress);
}

}  // namespace kavit
