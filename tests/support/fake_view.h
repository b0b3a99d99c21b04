#pragma once

#include <array>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "app/shell/shell_view.h"
#include "level/board.h"

// A window without a window: it remembers what it was told and answers questions from a list.
class FakeView final : public kavit::ShellView {
  public:
    using Control = kavit::Control;

    void SetText(Control control, const std::string& text) override { At(control).Text = text; }
    [[nodiscard]] std::string Text(Control control) const override { return At(control).Text; }
    void SetEnabled(Control control, bool enabled) override { At(control).Enabled = enabled; }
    void SetVisible(Control control, bool visible) override { At(control).Visible = visible; }
    void SetChecked(Control control, bool checked) override { At(control).Checked = checked; }
    [[nodiscard]] bool Checked(Control control) const override { return At(control).Checked; }
    void SetUnderlined(Control control, bool underlined) override {
        At(control).Underlined = underlined;
    }
    void SetReadOnly(Control /*control*/, bool readOnly) override { ReadOnly = readOnly; }
    void SetFocus(Control control) override { Focus = control; }
    void SetTitle(const std::string& title) override { Title = title; }
    void SetProgressRange(int most) override { ProgressMost = most; }
    void SetProgress(int value) override { Progress = value; }
    void ShowCell(int index, kavit::Picture picture) override {
        Cells[static_cast<std::size_t>(index)] = picture;
        ++CellsShown;
    }
    void Message(const std::string& text) override { Boxes.push_back(text); }
    void Notice(const std::string& text) override { Boxes.push_back(text); }
    [[nodiscard]] bool AskOkCancel(const std::string& text) override { return AskYesNo(text); }
    [[nodiscard]] bool AskYesNo(const std::string& text) override {
        Boxes.push_back(text);
        if (Answers.empty()) return true;
        const bool answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    [[nodiscard]] std::optional<std::string> AskOpenFile(const std::string& folder,
                                                         const std::string& /*name*/) override {
        AskedFolder = folder;
        return File;
    }
    [[nodiscard]] std::optional<std::string> AskSaveFile(const std::string& folder,
                                                         const std::string& name) override {
        AskedFolder = folder;
        AskedName = name;
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
    void ProcessEvents() override {
        // One handler at a time: what it sets off finds a window that is busy with it.
        auto handler = OnEvents;
        if (!handler) return;
        OnEvents = nullptr;
        handler();
        if (!OnEvents) OnEvents = handler;
    }
    void Repaint() override {}
    void Quit() override { ++Quits; }

    // The box that was shown last, "" for none; the list is emptied.
    std::string TakeBox() {
        const std::string box = Boxes.empty() ? "" : Boxes.back();
        Boxes.clear();
        return box;
    }
    [[nodiscard]] bool Shown(Control control) const { return At(control).Visible; }
    [[nodiscard]] bool On(Control control) const { return At(control).Enabled; }
    [[nodiscard]] bool Underlined(Control control) const { return At(control).Underlined; }
    // "SOLVE/ANIM" with "-" before what is disabled.
    [[nodiscard]] std::string Buttons() const {
        std::string text;
        for (const Control button : {Control::btnSOLVE, Control::btnANIM, Control::btnCLEAR}) {
            if (!text.empty()) text += " ";
            text +=
                (On(button) ? "" : "-") + (button == Control::btnCLEAR ? "CLEAR" : Text(button));
        }
        return text;
    }
    [[nodiscard]] std::string Lines() const {
        return Text(Control::txtLeft) + "|" + Text(Control::txtRight);
    }

    std::array<kavit::Picture, kavit::kCells> Cells{};
    int CellsShown = 0;
    bool ReadOnly = false;
    Control Focus = Control::btnSOLVE;
    std::string Title;
    int ProgressMost = 0;
    int Progress = 0;
    std::vector<std::string> Boxes;
    std::deque<bool> Answers;
    std::optional<std::string> File;
    std::optional<std::string> SaveFile;
    std::optional<std::string> Typed;
    std::string AskedFolder;
    std::string AskedName;
    std::string Clip;
    std::string Help;
    int Quits = 0;
    std::function<void()> OnEvents;

  private:
    struct State {
        std::string Text;
        bool Enabled = true;
        bool Visible = true;
        bool Checked = false;
        bool Underlined = false;
    };
    State& At(Control control) { return states_[static_cast<std::size_t>(control)]; }
    [[nodiscard]] const State& At(Control control) const {
        return states_[static_cast<std::size_t>(control)];
    }
    std::array<State, std::size(kavit::kControlNames)> states_;
};

// Every look at the clock of milliseconds takes 25 of them, so that each look is one to yield at.
class FakeClock final : public kavit::ShellClock {
  public:
    [[nodiscard]] double SecondsOfDay() const override { return Seconds; }
    [[nodiscard]] double Milliseconds() const override { return ms_ += 25; }

    double Seconds = 1000;

  private:
    mutable double ms_ = 0;
};
