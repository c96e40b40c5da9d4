#pragma once

#include "proxy/hostForms.h"
#include "ui/about/frmabout.h"
#include "ui/help/frmhelp.h"
#include "ui/options/frmoptions.h"

#include <functional>
#include <memory>
#include <utility>

/// The windows that are made anew for each showing, and destroyed after their closing.

/// One window of its kind at a time: another showing brings it to the front.
template <typename Window>
class FreshForm {
public:
    explicit FreshForm(std::function<std::unique_ptr<Window>()> make) : make(std::move(make)) {}

    [[nodiscard]] Window& load() {
        if (!form) {
            form = make();
            form->unloaded = [this] { form.release()->deleteLater(); };
        }
        return *form;
    }

private:
    std::function<std::unique_ptr<Window>()> make;
    std::unique_ptr<Window> form;
};

class Help final : public ShownForm {
public:
    void Show() override { form.load().present(); }

private:
    FreshForm<frmhelp> form{[] { return std::make_unique<frmhelp>(); }};
};

class About final : public ShownForm {
public:
    void Show() override { form.load().present(); }

private:
    FreshForm<frmabout> form{[] { return std::make_unique<frmabout>(); }};
};

class Options final : public OptionsForm {
public:
    explicit Options(const frmoptions::Parts& parts)
        : form([parts] { return std::make_unique<frmoptions>(parts); }) {}

    void Show() override { form.load().present(); }
    void ShowFirstRun() override {
        form.load().RestartMessenger = true;
        form.load().present();
    }

private:
    FreshForm<frmoptions> form;
};
