// SPDX-License-Identifier: MIT
#include "shell/TextWindows.h"

#include "shell/frmMethod.h"
#include "shell/frmNotes.h"

namespace {

constexpr const char *methodButton = "cmdMethod";
constexpr const char *notesButton = "cmdNotes";

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

TextWindows::TextWindows(TabStates &tabs, const DocumentCharts &charts, ShellWindow &window, Prompts &prompts,
                         QWidget *parent)
    : tabs_(tabs), charts_(charts), window_(window), prompts_(prompts), parent_(parent) {}

void TextWindows::mnuMethod_Click() { click(methodButton, true); }

void TextWindows::mnuNotes_Click() { click(notesButton, true); }

void TextWindows::click(const char *button, bool pressed) {
    window_.setButtonValue(QLatin1String(button), pressed);
    window_.Toolsbar_ButtonClick(QLatin1String(button));
}

void TextWindows::cmdMethod_Click() {
    const bool pressed = window_.buttonValue(QLatin1String(methodButton));
    window_.setToolTip(QLatin1String(methodButton),
                       pressed ? QStringLiteral("Hide method form") : QStringLiteral("Show method form"));
    if (!pressed)
        return unload(frmMethod_);
    frmMethod form(
        chart().GetMethodText(), [this] { click(methodButton, false); }, parent_);
    showModally(form, frmMethod_);
}

void TextWindows::cmdNotes_Click() {
    const bool pressed = window_.buttonValue(QLatin1String(notesButton));
    window_.setToolTip(QLatin1String(notesButton),
                       pressed ? QStringLiteral("Hide notes form") : QStringLiteral("Show notes form"));
    if (!pressed)
        return unload(frmNotes_);
    frmNotes form(
        chart(), tabs_.ChartSaved[tabs_.CurrentChart], prompts_, [this] { click(notesButton, false); }, parent_);
    showModally(form, frmNotes_);
}
