#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/model/model.h"

// A window without a window: it keeps what it was shown, answers questions from a list, and runs a
// search on the spot.
class FakeView final : public kavit::View, private kavit::SolveObserver {
  public:
    void Show(const kavit::Screen& screen) override { Now = screen; }
    void Focus(kavit::Place place) override { Focused = place; }
    void Say(const std::string& text) override { Boxes.push_back(text); }
    [[nodiscard]] kavit::Choice Ask(const std::string& text, kavit::Choices choices) override {
        Boxes.push_back(text);
        if (Answers.empty()) {
            return choices == kavit::Choices::YesNo ? kavit::Choice::No : kavit::Choice::Yes;
        }
        const kavit::Choice answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    [[nodiscard]] std::optional<std::string> AskOpenFile(const std::string& /*folder*/,
                                                         const std::string& /*name*/) override {
        return OpenFile;
    }
    [[nodiscard]] std::optional<std::string> AskSaveFile(kavit::FileKind /*kind*/,
                                                         const std::string& /*folder*/,
                                                         const std::string& name,
                                                         const std::string& what) override {
        AskedName = name;
        AskedWhat = what;
        return SaveFile;
    }
    [[nodiscard]] std::optional<std::string> AskText(const std::string& /*title*/,
                                                     const std::string& /*prompt*/,
                                                     const std::string& /*answer*/) override {
        return Typed;
    }
    [[nodiscard]] std::string Clipboard() const override { return Clip; }
    void SetClipboard(const std::string& text) override { Clip = text; }
    void ShowHelp(int topic, const std::string& levelName) override {
        Help = std::to_string(topic) + levelName;
    }
    void StartSearch(kavit::SolveSession& session, const kavit::SolveRequest& request) override {
        Request = request;
        kavit::SolveReport report = session.Run(request, *this);
        if (OnReport) OnReport(report);
        Run([&](kavit::Model& m) { m.Solve.SearchEnded(report); });
    }
    void StartAside(kavit::SolveSession& session, const kavit::SolveRequest& request) override {
        Aside = [this, &session, request] {
            kavit::SolveObserver nobody;
            const kavit::SolveReport report = session.Run(request, nobody);
            Run([&](kavit::Model& m) { m.Aside.Ended(report); });
        };
        if (!HoldAside) EndAside();
    }
    void EndAside() {
        if (const auto run = std::exchange(Aside, nullptr)) run();
    }
    void Quit() override { ++Quits; }

    void Run(const std::function<void(kavit::Model&)>& command) { Owner->Run(command); }

    // The boxes that were shown, joined by " / "; the list is emptied.
    std::string TakeBoxes() {
        std::string boxes;
        for (const std::string& box : Boxes) boxes += (boxes.empty() ? "" : " / ") + box;
        Boxes.clear();
        return boxes;
    }
    // "SOLVE ANIM CLEAR" with "-" before what is disabled.
    [[nodiscard]] std::string Buttons() const {
        const kavit::Buttons& keys = Now.Keys;
        return std::string(keys.SolveOn ? "" : "-") + keys.Solve + (keys.AnimOn ? " " : " -") +
               keys.Anim + (keys.ClearOn ? " CLEAR" : " -CLEAR");
    }
    [[nodiscard]] std::string Lines() const { return Now.Left + "|" + Now.Right; }

    kavit::Model* Owner = nullptr;
    std::function<void()> Aside;  // the search beside the drawing, from its start to its end
    bool HoldAside = false;
    kavit::Screen Now;
    kavit::Place Focused = kavit::Place::NextButton;
    std::vector<std::string> Boxes;
    std::deque<kavit::Choice> Answers;
    std::optional<std::string> OpenFile;
    std::optional<std::string> SaveFile;
    std::optional<std::string> Typed;
    std::string AskedName;
    std::string AskedWhat;
    std::string Clip;
    std::string Help;
    kavit::SolveRequest Request;
    int Quits = 0;
    // What the user does while a search runs: called at whatever the search says.
    std::function<void(kavit::Model&)> DuringSearch;
    // What becomes of a report on its way to the model.
    std::function<void(kavit::SolveReport&)> OnReport;

  private:
    void ShowMsg(kavit::Result /*message*/, const kavit::MessageLines& lines) override {
        Run([&](kavit::Model& m) { m.Solve.SearchSaid(lines); });
        Interrupt();
    }
    void ShowSide(char side) override {
        Run([&](kavit::Model& m) { m.Solve.SideChanged(side); });
        Interrupt();
    }
    // One at a time: what it sets off finds a window that is busy with it.
    void Interrupt() {
        const auto action = std::exchange(DuringSearch, nullptr);
        if (!action) return;
        Run(action);
        if (!DuringSearch) DuringSearch = action;
    }
};
