#pragma once

#include "platform/Clock.h"
#include "proxy/hostForms.h"
#include "ui/log/frmlog.h"
#include "ui/notes/frmnotes.h"

#include <memory>
#include <string>

/// The windows that are made when they are first needed and then live as long as the program, since
/// what they hold is to survive their closing.

class Notes final : public ShownForm {
public:
    Notes(NotesStore& notes, MessageBox& messageBox) : notes(notes), messageBox(messageBox) {}

    void Show() override {
        if (!form) form = std::make_unique<frmnotes>(notes, messageBox);
        form->present();
    }

private:
    NotesStore& notes;
    MessageBox& messageBox;
    std::unique_ptr<frmnotes> form;
};

class Log final : public LogForm {
public:
    Log(Clock& clock, MessageBox& messageBox) : clock(clock), messageBox(messageBox) {}

    void Show() override { load().present(); }
    void AddItem(std::string_view text) override {
        load().append(std::string(text) + " (" + clock.timeText() + ")");
    }

private:
    [[nodiscard]] frmlog& load() {
        if (!form) form = std::make_unique<frmlog>(messageBox);
        return *form;
    }

    Clock& clock;
    MessageBox& messageBox;
    std::unique_ptr<frmlog> form;
};
