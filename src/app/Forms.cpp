#include "app/Forms.h"

#include <QCoreApplication>
#include <vector>

namespace Forms {
namespace {
struct Entry {
    QWidget* form;
    std::function<void()> unloader;
};
std::vector<Entry>& Loaded() {
    static std::vector<Entry> loaded;
    return loaded;
}
std::function<void()>& LastFormHandler() {
    static std::function<void()> handler = [] { QCoreApplication::exit(0); };
    return handler;
}
} // namespace

void Register(QWidget* form, std::function<void()> unloader) {
    Loaded().push_back({form, std::move(unloader)});
}

void Unregister(QWidget* form) {
    auto& loaded = Loaded();
    for (auto it = loaded.begin(); it != loaded.end(); ++it) {
        if (it->form == form) {
            loaded.erase(it);
            if (loaded.empty() && LastFormHandler()) LastFormHandler()();
            return;
        }
    }
}

int Count() {
    return static_cast<int>(Loaded().size());
}

void UnloadAll() {
    while (!Loaded().empty()) {
        auto unloader = Loaded().back().unloader;
        QWidget* form = Loaded().back().form;
        unloader();
        // A form whose unloader did not unregister it must not hold the loop forever.
        if (!Loaded().empty() && Loaded().back().form == form) Unregister(form);
    }
}

void SetLastFormHandler(std::function<void()> handler) {
    LastFormHandler() = std::move(handler);
}

} // namespace Forms
