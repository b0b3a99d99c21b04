#pragma once

#include <string_view>

// The controls of the main window by name. The logic behind the window knows them as places that
// show a text or take a command; the window finds the widget, menu entry or timer of each by its
// object name, which is the name used here. Entries of control arrays end with their index.
namespace kavit {

// clang-format off
#define KAVIT_CONTROLS(X)                                                                        \
    X(btnSOLVE) X(btnANIM) X(btnCLEAR)                                                           \
    X(txtLeft) X(txtRight) X(lblTimer) X(lblSeaTimer) X(PBarAdvance)                             \
    X(lblOpt) X(lblSize) X(lblDebug) X(txtNow) X(txtIni)                                         \
    X(frmCommands)                                                                               \
    X(btnMover0) X(btnMover1) X(btnMover2) X(btnMover3) X(btnMover4)                             \
    X(btnSpMov0) X(btnSpMov1) X(btnSpMov2) X(btnSpMov3) X(btnSpMov4)                             \
    X(frmSizes) X(cmbMemory) X(cmbBlocks) X(cmbTime) X(chkWriteSol) X(chkNoWriteSol)             \
    X(frmbtnApply) X(frmbtnCancel)                                                               \
    X(rtxtImport)                                                                                \
    X(ImgEdit0) X(ImgEdit1) X(ImgEdit2) X(ImgEdit3) X(ImgEdit4)                                  \
    X(ImgEdit5) X(ImgEdit6) X(ImgEdit7) X(ImgEdit8) X(ImgEdit9)                                  \
    X(TimerWatch) X(TimerAnim)                                                                   \
    X(OptMovPus0) X(OptMovPus1)                                                                  \
    X(mnuFile) X(mnuOpen0) X(mnuOpen1) X(mnuOpen2) X(mnuOpen3)                                   \
    X(mnuSave) X(mnuEditBoard) X(mnuImport)                                                      \
    X(mnuCopyBoard) X(mnuCopySolution) X(mnuPasteLevel) X(mnuExit)                               \
    X(mnuSearch) X(mnuSea1) X(mnuSea2) X(mnuSea3)                                                \
    X(mnuExample) X(mnuEx1) X(mnuEx2) X(mnuEx3) X(mnuEx5) X(mnuEx6) X(mnuEx7) X(mnuEx8)          \
    X(mnuEx10) X(mnuEx11)                                                                        \
    X(mnuOptimizer) X(mnuOpt0) X(mnuOpt1) X(mnuOpt2) X(mnuOpt3) X(mnuOptSpec)                    \
    X(mnuConfigure)                                                                              \
    X(mnuHasher) X(mnuHash0) X(mnuHash1) X(mnuHash2)                                             \
    X(mnuH) X(mnuHlp0) X(mnuHlp1) X(mnuHlp2) X(mnuHlpInfo) X(mnuHlpAbout)
// clang-format on

enum class Control {
#define KAVIT_CONTROL_ENTRY(name) name,
    KAVIT_CONTROLS(KAVIT_CONTROL_ENTRY)
#undef KAVIT_CONTROL_ENTRY
};

inline constexpr std::string_view kControlNames[] = {
#define KAVIT_CONTROL_NAME(name) #name,
    KAVIT_CONTROLS(KAVIT_CONTROL_NAME)
#undef KAVIT_CONTROL_NAME
};
inline constexpr int kControlCount = static_cast<int>(std::size(kControlNames));

// Entry `index` of a control array, counted from its first entry in the list above.
[[nodiscard]] constexpr Control At(Control first, int index) {
    return static_cast<Control>(static_cast<int>(first) + index);
}

}  // namespace kavit
