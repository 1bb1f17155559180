#pragma once

#include <functional>
#include <string>
#include <utility>

#include "session/AyudaCampos.h"
#include "toolkit/Form.h"
#include "ui/ListingGrid.h"
#include "ui/Transaction.h"

namespace FendaMaestros {

/// The field that has the focus is yellow, the others are white.
inline constexpr Color focusColor = 65535;
inline constexpr Color normalColor = 16777215;

/// A helper for a search without a screen of its own, set up as those of the screens: on the session and the desktop of
/// InstanciaActual. Throws std::logic_error, in Spanish, when either is missing.
AyudaCampos searchHelp();

/// Shows the busy pointer as long as it lives, from when the screen has been painted; then the pointer is what it was.
class BusyPointer {
public:
    explicit BusyPointer(Desktop& desktop);
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
    ~BusyPointer();

private:
    Desktop& desktop_;
    int found_;
};

/// While it lives the screen takes no input; with `hourglass`, the pointer shows that it is busy. At the end, also when
/// an exception ends it, screen and pointer are again as they were, and what was waiting is handled.
class BusyGuard {
public:
    explicit BusyGuard(Form& form, bool hourglass = true);
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;
    ~BusyGuard();

private:
    Form& form_;
    bool hourglass_;
    bool enabled_;
    int pointer_;
};

/// What every screen of the component shares: Enter moves on, Esc leaves, the field being edited is highlighted, a
/// message never makes the focus jump, and a status line tells what needs no answer.
///
/// The pending-message mark lives in Tag: while it is not empty, the Enter that dismisses a message does not move the
/// focus on. Any key released empties it. Which letter it is says nothing.
class Screen : public Form {
protected:
    /// Shows itself on the desktop of InstanciaActual. Throws std::logic_error, in Spanish, when there is none.
    Screen();
    /// For a screen that needs no session.
    explicit Screen(Desktop& desktop);

    /// Title of the message boxes; empty shows the desktop's own.
    std::string sTituloVentana;
    AyudaCampos Ayuda;

    /// Sets up Ayuda on the session; screens with fields that override it call it first.
    void onLoad() override;
    void onKeyUp(int& code, int shift) override;
    void showKeys() override;
    /// A server that is lost is told, and the screen keeps its text: the next gesture connects again.
    bool outlives(const std::exception& failure) override;

    /// Highlights the field while it has the focus. What a screen does itself on leaving the field goes in `left`, what
    /// it does on entering it in `entered`.
    void editField(TextBox& field, std::function<void()> left = {}, std::function<void()> entered = {});

    /// Shows a text on the status line, until something is changed; "" empties it.
    void tell(std::string text, StatusKind kind = StatusKind::Plain) { lblEstado.say(std::move(text), kind); }

    /// Puts a text in front of what the status line says, or behind it, where it decides how the whole is meant.
    void tellInFront(const std::string& text);
    void tellBehind(const std::string& text, StatusKind kind);

    /// What the person has typed and not saved, as the status text names it: "43000012 Muebles Peñalba". "" when there
    /// is nothing, as on a screen that stores nothing. Must not throw.
    virtual std::string unsaved() const { return {}; }
    /// Carries out what may put something else on the screen, under an empty status line; what that has left unsaved is
    /// told in front of whatever the step tells: "Sin guardar: 43000012 Muebles Peñalba".
    void replacing(const std::function<void()>& step);
    /// What is left unsaved is told where the person goes on: see Desktop::leaveWords.
    void onUnload() override;

    /// Sets the pending-message mark, for a message that is to come or that has just been answered.
    void markPendingMessage(char letter = 'e') { Tag = letter; }
    /// Takes the mark away again unless the key that has answered is still to be released.
    void unmarkUnlessAwaited();
    /// Sets the mark, shows a message with an OK button and puts the focus on the field at fault.
    void warn(const std::string& text, Control& field, int style = message::Exclamation);
    /// A Yes/No question with No as default; true only for Yes.
    bool confirm(const std::string& text, int icon = message::Question);
    /// The same, with the mark for the key that answers: an Enter leaves the focus where the answer puts it.
    bool confirmInPlace(const std::string& text, int icon, const std::string& title);
    /// ListingGrid::exportRows, where the Enter that dismisses what the exporter tells moves no focus.
    void exportRows(ListingGrid& grid, const std::string& title);

    /// Carries out a save as withPatience() does. Meanwhile the screen takes no input, and it and the pointer show that
    /// something is under way and what it may have to wait for.
    template <class Save>
    auto saveWithPatience(Save&& save) {
        const SavingSign sign(*this);
        return withPatience(desktop(), std::forward<Save>(save));
    }

    StatusLabel lblEstado;

private:
    /// Lives as long as a save; then the status line says what it said before.
    class SavingSign {
    public:
        explicit SavingSign(Screen& screen);
        SavingSign(const SavingSign&) = delete;
        SavingSign& operator=(const SavingSign&) = delete;
        ~SavingSign();

    private:
        Screen& screen_;
        std::string told_;
        StatusKind kind_;
        BusyGuard busy_;
    };
};

}  // namespace FendaMaestros
