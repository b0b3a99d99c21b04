#pragma once

#include <QObject>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "output/solve_session.h"

namespace kavit {

// The thread that a search runs on. What the search says is kept, the latest of each kind, and
// told on the window's thread ten times a second at most, whatever the search does. The report
// comes when all of that was told.
class SearchThread final : public QObject, private SolveObserver {
    Q_OBJECT

  public:
    explicit SearchThread(QObject* parent) : QObject(parent) {}
    // Stops a search that still runs, and waits for its end.
    ~SearchThread() override;

    void Start(SolveSession& session, const SolveRequest& request);

  signals:
    // On the window's thread.
    void Said(const kavit::MessageLines& lines);
    void Came(const kavit::SolveProgress& progress);
    void Side(char side);
    void Ended(const std::shared_ptr<kavit::SolveReport>& report);

  private:
    struct News {
        std::optional<MessageLines> Lines;
        std::optional<SolveProgress> Progress;
        std::optional<char> Side;
    };

    void ShowMsg(Result message, const MessageLines& lines) override;
    void ShowProgress(const SolveProgress& progress) override;
    void ShowSide(char side) override;
    template <typename Change>
    void Note(Change change);
    void Tell();
    void TellLater();

    std::thread thread_;
    SolveSession* session_ = nullptr;  // while it runs
    std::mutex mutex_;
    News news_;
    bool told_ = false;  // an event is on its way, or was there less than a tenth of a second ago
};

}  // namespace kavit
