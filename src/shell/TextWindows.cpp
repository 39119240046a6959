// SPDX-License-Identifier: MIT
#include "shell/TextWindows.h"

#include "shell/frmMethod.h"
#include "shell/frmNotes.h"

#include <utility>

namespace ostrel {

namespace {

struct CheckButton {
    const char *key;
    const char *tipPressed;
    const char *tipReleased;
};

constexpr CheckButton methodButton = {"cmdMethod", "Hide method form", "Show method form"};
constexpr CheckButton notesButton = {"cmdNotes", "Hide notes form", "Show notes form"};

/// Sets the button's tool tip according to its Value, and returns the Value.
bool tellValue(const CheckButton &button, ShellWindow &window) {
    const bool pressed = window.buttonValue(QLatin1String(button.key));
    window.setToolTip(QLatin1String(button.key), QLatin1String(pressed ? button.tipPressed : button.tipReleased));
    return pressed;
}

/// Shows a form until it is unloaded; `loaded` points to it for that time.
template <typename Form>
void showModally(Form &form, Form *&loaded) {
    loaded = &form;
    form.exec();
    loaded = nullptr;
}

template <typename Form>
void unload(Form *loaded) {
    if (loaded != nullptr)
        loaded->unload();
}

} // namespace

TextWindows::TextWindows(TabStates &tabs, const DocumentCharts &charts, Log log, ShellWindow &window, Prompts &prompts,
                         QWidget *parent)
    : tabs_(tabs), charts_(charts), log_(std::move(log)), window_(window), prompts_(prompts), parent_(parent) {}

void TextWindows::mnuMethod_Click() { click(methodButton.key, true); }

void TextWindows::mnuNotes_Click() { click(notesButton.key, true); }

void TextWindows::click(const char *button, bool pressed) {
    window_.setButtonValue(QLatin1String(button), pressed);
    window_.Toolsbar_ButtonClick(QLatin1String(button));
}

void TextWindows::cmdMethod_Click() {
    if (!tellValue(methodButton, window_))
        return unload(frmMethod_);
    frmMethod form(
        chart().GetMethodText(), [this] { click(methodButton.key, false); }, parent_);
    showModally(form, frmMethod_);
}

void TextWindows::cmdNotes_Click() {
    if (!tellValue(notesButton, window_))
        return unload(frmNotes_);
    frmNotes form(
        chart(), prompts_, [this](const QString &Notes) { takeNotes(Notes); },
        [this] { click(notesButton.key, false); }, parent_);
    showModally(form, frmNotes_);
}

void TextWindows::takeNotes(const QString &Notes) {
    chart().SetNotes(Notes);
    tabs_.ChartSaved[tabs_.CurrentChart] = false;
    if (tabs_.CurrentChart != recorderChart)
        return;
    log_.chart.SetNotes(Notes);
    log_.writeNow();
}

} // namespace ostrel
