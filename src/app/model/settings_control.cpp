#include "app/model/settings_control.h"

#include "output/number_text.h"
#include "solver/store/store_size.h"

namespace kavit {
namespace {

constexpr const char* kSettingsName = "Kavit.ini";
constexpr std::int64_t kMostSeconds = 86400;
constexpr std::int64_t kMostBlocks = 32767;

// What stands in a field, fit for a message: anything can be pasted there.
std::string Quoted(const std::string& text) {
    constexpr std::size_t kShown = 40;
    if (text.size() <= kShown) return '"' + text + '"';
    std::size_t end = kShown;
    while (end > 0 && (text[end] & 0xC0) == 0x80) --end;  // no character is cut in two
    return '"' + text.substr(0, end) + "...\"";
}

PanelFields FieldsOf(const Sizes& sizes) {
    return {B(sizes.NumPos), B(sizes.Blocks), B(sizes.MaxTime)};
}

}  // namespace

std::string SettingsControl::Load(const std::filesystem::path& folder) {
    file_ = folder / kSettingsName;
    const SettingsReply reply = ReadSettings(file_);
    if (!reply.Fault.empty()) return reply.Fault;
    settings_ = reply.Values;
    ShowSizes();
    ShowSwitches();
    // A file may ask for what the machine can't give: the program must open all the same.
    if (!Apply(settings_.Fields)) {
        settings_.Fields = {};
        (void)Apply(settings_.Fields);
        ShowSizes();
    }
    desk_.Screen.Timer = "/" + B(settings_.Fields.MaxTime);
    return "";
}

void SettingsControl::Save() {
    const std::string fault = WriteSettings(file_, settings_);
    if (!fault.empty()) desk_.Say(fault);
}

void SettingsControl::ShowSizes() {
    Edited(FieldsOf(settings_.Fields));
}

void SettingsControl::Edited(const PanelFields& fields) {
    desk_.Screen.Panel = fields;
    ShowMemory();
}

// What a choice takes is said before it is made.
void SettingsControl::ShowMemory() {
    const auto positions = ParseNumber(desk_.Screen.Panel.Memory);
    const auto blocks = ParseNumber(desk_.Screen.Panel.Blocks);
    const bool sizes = positions && blocks && *positions > 0 && *positions <= kMostPositions &&
                       *blocks > 0 && *blocks <= kMostBlocks;
    desk_.Screen.PanelMemory = sizes ? "Memory: " + BytesText(BytesFor(*positions, *blocks)) +
                                           " of " + BytesText(solver_.MostBytes())
                                     : "";
}

// With a tenth to spare: what the machine can give changes while the user reads.
std::int64_t SettingsControl::MostPositions() const {
    return PositionsFor(solver_.MostBytes() / 10 * 9, settings_.Fields.Blocks);
}

void SettingsControl::ShowSwitches() {
    desk_.Screen.WriteSol = settings_.WriteSol;
    desk_.Screen.NoWriteSol = settings_.NoWriteSol;
}

void SettingsControl::Configure() {
    if (desk_.Refused(Need::Change)) return;
    if (desk_.Screen.PanelVisible) return Cancel();
    desk_.Screen.PanelVisible = true;
    desk_.Window().Focus(Place::Cancel);
}

void SettingsControl::Cancel() {
    ShowSizes();
    HidePanel();
}

void SettingsControl::HidePanel() {
    if (!desk_.Screen.PanelVisible) return;
    desk_.Screen.PanelVisible = false;
    desk_.Window().Focus(Place::NextButton);
}

void SettingsControl::Apply() {
    if (desk_.Refused(Need::Change) || !ApplyFields()) return;
    if (desk_.Now() == State::OutOfMemory) {
        desk_.Fire(Event::MemoryLeft);
        desk_.ClearLabels();
    }
    desk_.ShowMsg(Result::LevelOpened);
}

// The numbers of the panel; says which field holds none.
std::optional<Sizes> SettingsControl::PanelSizes() {
    const struct {
        const std::string& Text;
        const char* Label;
        Place Field;
    } fields[] = {
        {desk_.Screen.Panel.Memory, "Max Positions", Place::Memory},
        {desk_.Screen.Panel.Blocks, "Blocks", Place::Blocks},
        {desk_.Screen.Panel.Time, "Max Time", Place::Time},
    };
    std::int64_t numbers[3] = {};
    for (std::size_t i = 0; i < std::size(numbers); ++i) {
        const std::optional<std::int64_t> number = ParseNumber(fields[i].Text);
        if (!number) {
            desk_.Say(std::string(fields[i].Label) + ": " + Quoted(fields[i].Text) +
                      " is not a whole number");
            desk_.Window().Focus(fields[i].Field);
            return std::nullopt;
        }
        numbers[i] = *number;
    }
    return Sizes{numbers[0], numbers[1], numbers[2]};
}

bool SettingsControl::ApplyFields() {
    const std::optional<Sizes> sizes = PanelSizes();
    return sizes && Apply(*sizes);
}

bool SettingsControl::Apply(const Sizes& sizes) {
    const std::int64_t oldTime = settings_.Fields.MaxTime;
    const ApplyReply reply = solver_.ApplySizes(sizes);
    if (!reply.Ok) {
        desk_.Say(std::string(reply.Message));
        // A number that is no size stays to be mended; what can't be had is put back.
        const bool noSize = sizes.NumPos <= 0 || sizes.Blocks <= 0 || sizes.MaxTime <= 0;
        if (sizes.MaxTime > kMostSeconds || !noSize) ShowSizes();
        return false;
    }
    settings_.Fields = sizes;
    if (sizes.MaxTime != oldTime) desk_.Screen.Timer = "0/" + B(sizes.MaxTime);
    if (reply.Reallocated) {
        desk_.Screen.ProgressMost = sizes.NumPos;
        desk_.Screen.Size = B(sizes.NumPos) + "/" + B(sizes.Blocks);
        HidePanel();
    }
    return true;
}

void SettingsControl::ApplyPending() {
    if (!desk_.Screen.PanelVisible) return;
    if (desk_.Screen.Panel != FieldsOf(settings_.Fields)) (void)ApplyFields();
    HidePanel();
}

void SettingsControl::SetWriteSol(bool on) {
    settings_.WriteSol = on;
    if (on) settings_.NoWriteSol = false;
    ShowSwitches();
}

void SettingsControl::SetNoWriteSol(bool on) {
    settings_.NoWriteSol = on;
    if (on) settings_.WriteSol = false;
    ShowSwitches();
}

}  // namespace kavit
