#include "app/shell/shell.h"
#include "output/number_text.h"

// The settings panel, the two switches about the solution file, and Save Configuration.
namespace kavit {
namespace {

constexpr const char* kSettingsName = "Kavit.ini";
constexpr std::int64_t kMostSeconds = 86400;

// What stands in a field, fit for a message: anything can be pasted there.
std::string Quoted(const std::string& text) {
    constexpr std::size_t kShown = 40;
    if (text.size() <= kShown) return '"' + text + '"';
    std::size_t end = kShown;
    while (end > 0 && (text[end] & 0xC0) == 0x80) --end;  // no character is cut in two
    return '"' + text.substr(0, end) + "...\"";
}

}  // namespace

bool Shell::LoadSettings() {
    const SettingsReply reply = ReadSettings(startFolder_ / kSettingsName);
    if (!reply.Fault.empty()) {
        view_.Message(reply.Fault);
        return false;
    }
    settings_ = reply.Values;
    ShowSettings();
    view_.SetText(Control::lblTimer, std::string("/").append(B(settings_.Fields.MaxTime)));
    // A file may ask for what the machine can't give: the program must open all the same.
    if (!Apply(settings_.Fields)) {
        settings_.Fields = {};
        (void)Apply(settings_.Fields);
        ShowSizes();
    }
    return true;
}

void Shell::ShowSettings() {
    ShowSizes();
    ShowChoices();
    view_.SetChecked(Control::chkWriteSol, settings_.WriteSol);
    view_.SetChecked(Control::chkNoWriteSol, settings_.NoWriteSol);
}

void Shell::ShowSizes() {
    view_.SetText(Control::cmbMemory, B(settings_.Fields.NumPos));
    view_.SetText(Control::cmbBlocks, B(settings_.Fields.Blocks));
    view_.SetText(Control::cmbTime, B(settings_.Fields.MaxTime));
}

void Shell::ConfigureClicked() {
    if (ChangeRefused()) return;
    if (configOpen_) return CancelClicked();
    view_.SetVisible(Control::frmSizes, true);
    view_.SetFocus(Control::frmbtnCancel);
    configOpen_ = true;
}

void Shell::CancelClicked() {
    ShowSizes();
    HidePanel();
}

void Shell::HidePanel() {
    view_.SetVisible(Control::frmSizes, false);
    configOpen_ = false;
}

void Shell::ApplyClicked() {
    if (ChangeRefused()) return;
    if (ApplyFields()) ShowMsg(static_cast<int>(Result::LevelOpened));
}

// The numbers of the panel; says which field holds none.
std::optional<Sizes> Shell::PanelFields() {
    const auto read = [this](Control field, const char* label) {
        const std::optional<std::int64_t> number = ParseNumber(view_.Text(field));
        if (!number) {
            Say(Tr(label) + ": " + Quoted(view_.Text(field)) + " " + Tr("is not a whole number"));
            view_.SetFocus(field);
        }
        return number;
    };
    const auto positions = read(Control::cmbMemory, "Max Positions");
    if (!positions) return std::nullopt;
    const auto blocks = read(Control::cmbBlocks, "Blocks");
    if (!blocks) return std::nullopt;
    const auto time = read(Control::cmbTime, "Max Time");
    if (!time) return std::nullopt;
    return Sizes{*positions, *blocks, *time};
}

bool Shell::ApplyFields() {
    const std::optional<Sizes> fields = PanelFields();
    return fields && Apply(*fields);
}

bool Shell::Apply(const Sizes& fields) {
    const std::int64_t oldTime = settings_.Fields.MaxTime;
    const ApplyReply reply = solver_.ApplySizes(fields);
    if (!reply.Ok) {
        view_.Message(Tr(std::string(reply.Message).c_str()));
        // A number that is no size stays to be mended; what can't be had is put back.
        const bool noSize = fields.NumPos <= 0 || fields.Blocks <= 0 || fields.MaxTime <= 0;
        if (fields.MaxTime > kMostSeconds || !noSize) ShowSizes();
        return false;
    }
    settings_.Fields = fields;
    if (fields.MaxTime != oldTime)
        view_.SetText(Control::lblTimer, std::string("0/").append(B(fields.MaxTime)));
    if (reply.Reallocated) {
        view_.SetProgressRange(static_cast<int>(fields.NumPos));
        view_.SetText(Control::lblSize, B(fields.NumPos) + "/" + B(fields.Blocks));
        HidePanel();
    }
    return true;
}

// Commands that need the whole window take over what stands in the open panel.
void Shell::ApplyPending() {
    if (!configOpen_) return;
    const bool pending = view_.Text(Control::cmbMemory) != B(settings_.Fields.NumPos) ||
                         view_.Text(Control::cmbBlocks) != B(settings_.Fields.Blocks) ||
                         view_.Text(Control::cmbTime) != B(settings_.Fields.MaxTime);
    if (pending) (void)ApplyFields();
    HidePanel();
}

void Shell::SizeChosen() {
    view_.SetFocus(Control::frmbtnApply);
}

void Shell::WriteSolClicked() {
    settings_.WriteSol = view_.Checked(Control::chkWriteSol);
    if (settings_.WriteSol) settings_.NoWriteSol = false;
    view_.SetChecked(Control::chkNoWriteSol, settings_.NoWriteSol);
}

void Shell::NoWriteSolClicked() {
    settings_.NoWriteSol = view_.Checked(Control::chkNoWriteSol);
    if (settings_.NoWriteSol) settings_.WriteSol = false;
    view_.SetChecked(Control::chkWriteSol, settings_.WriteSol);
}

void Shell::SaveSettings() {
    const std::string fault = WriteSettings(startFolder_ / kSettingsName, settings_);
    if (!fault.empty()) Say(fault);
}

}  // namespace kavit
