#pragma once

#include <functional>
#include <memory>
#include <utility>

/// How long a window lives.
enum class FormLife {
    UntilClosed,  ///< made anew for each showing, destroyed after the event that closed it
    WholeRun,     ///< closing only hides it, so that what it holds stays
};

/// The one window of its kind, made when it is first needed.
template <typename Window>
class FormHolder {
public:
    /// Makes the window, hidden.
    using Make = std::function<std::unique_ptr<Window>()>;

    /// There is no window yet.
    explicit FormHolder(
        FormLife life, Make make = [] { return std::make_unique<Window>(); })
        : life(life), make(std::move(make)) {}
    FormHolder(const FormHolder&) = delete;
    FormHolder& operator=(const FormHolder&) = delete;
    ~FormHolder() = default;

    /// The window, shown or not. It is made where there is none.
    [[nodiscard]] Window& load() {
        if (form) return *form;
        form = make();
        if (life == FormLife::UntilClosed) {
            form->unloaded = [this] { form.release()->deleteLater(); };
        }
        return *form;
    }
    /// Shows the window, or brings it to the front when it is shown already.
    void Show() { load().present(); }

private:
    FormLife life;
    Make make;
    std::unique_ptr<Window> form;
};
