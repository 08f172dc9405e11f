#pragma once

#include <QWidget>
#include <functional>

// The program's forms collection. Each form is a lazily created singleton: instance() makes
// it on first use, unload() destroys it so that the next use starts from fresh state. When the
// last form is unloaded the process ends.
namespace Forms {

void Register(QWidget* form, std::function<void()> unloader);
void Unregister(QWidget* form);
int Count();
// Unloads every loaded form in turn.
void UnloadAll();
// What happens when the last form goes: by default the event loop ends with status 0.
void SetLastFormHandler(std::function<void()> handler);

} // namespace Forms

template <class F> class FormSingleton {
public:
    static F* instance() {
        if (!s_instance) {
            s_instance = new F();
            Forms::Register(s_instance, [] { F::unload(); });
        }
        return s_instance;
    }
    static bool isLoaded() { return s_instance != nullptr; }
    // Destroys the default instance. The object is deleted from the event loop, so that a
    // form may be unloaded from within one of its own handlers.
    static void unload() {
        F* form = s_instance;
        if (!form) return;
        s_instance = nullptr;
        form->beforeUnload();
        form->hide();
        form->deleteLater();
        Forms::Unregister(form);
    }

protected:
    // Hook for a form's own clean-up; runs while the form still exists.
    void beforeUnload() {}

private:
    static inline F* s_instance = nullptr;
};
