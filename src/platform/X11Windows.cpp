#include "platform/X11Windows.h"

#include <QGuiApplication>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace platform::x11 {
namespace {

struct Connection {
    xcb_connection_t* c = nullptr;
    xcb_window_t root = 0;
    Connection() {
        int screenNo = 0;
        c = xcb_connect(nullptr, &screenNo);
        if (xcb_connection_has_error(c)) {
            xcb_disconnect(c);
            c = nullptr;
            return;
        }
        xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
        for (int i = 0; i < screenNo && it.rem; ++i)
            xcb_screen_next(&it);
        root = it.data ? it.data->root : 0;
    }
    ~Connection() {
        if (c) xcb_disconnect(c);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
};

template <typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;
template <typename T> Reply<T> Own(T* p) {
    return Reply<T>(p, &std::free);
}

xcb_atom_t Atom(xcb_connection_t* c, const char* name) {
    auto reply = Own(xcb_intern_atom_reply(
        c, xcb_intern_atom(c, 1, static_cast<uint16_t>(std::strlen(name)), name), nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

struct TitleAtoms {
    xcb_atom_t netWmName, utf8;
};

QString Title(xcb_connection_t* c, xcb_window_t w, const TitleAtoms& atoms) {
    if (atoms.netWmName != XCB_ATOM_NONE) {
        auto r = Own(xcb_get_property_reply(
            c, xcb_get_property(c, 0, w, atoms.netWmName, atoms.utf8, 0, 1024), nullptr));
        if (r && r->type != XCB_ATOM_NONE && xcb_get_property_value_length(r.get()) > 0)
            return QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(r.get())),
                                     xcb_get_property_value_length(r.get()));
    }
    auto r = Own(xcb_get_property_reply(
        c, xcb_get_property(c, 0, w, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 1024),
        nullptr));
    if (r && r->type != XCB_ATOM_NONE && xcb_get_property_value_length(r.get()) > 0)
        return QString::fromLatin1(static_cast<const char*>(xcb_get_property_value(r.get())),
                                   xcb_get_property_value_length(r.get()));
    return QString();
}

std::vector<xcb_window_t> Children(xcb_connection_t* c, xcb_window_t w) {
    auto tree = Own(xcb_query_tree_reply(c, xcb_query_tree(c, w), nullptr));
    if (!tree) return {};
    xcb_window_t* kids = xcb_query_tree_children(tree.get());
    return std::vector<xcb_window_t>(kids, kids + xcb_query_tree_children_length(tree.get()));
}

} // namespace

bool Available() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

std::vector<TopWindow> TopLevelWindows() {
    std::vector<TopWindow> result;
    Connection conn;
    if (!conn.c) return result;
    TitleAtoms atoms{Atom(conn.c, "_NET_WM_NAME"), Atom(conn.c, "UTF8_STRING")};
    for (xcb_window_t w : Children(conn.c, conn.root)) {
        QString title = Title(conn.c, w, atoms);
        if (title.isEmpty()) {
            // A reparenting window manager's frame: the title is on the client inside it.
            for (xcb_window_t inner : Children(conn.c, w)) {
                QString innerTitle = Title(conn.c, inner, atoms);
                if (!innerTitle.isEmpty()) result.push_back({inner, innerTitle});
            }
            continue;
        }
        result.push_back({w, title});
    }
    return result;
}

quint32 FindWindowByTitle(const QString& title) {
    for (const TopWindow& w : TopLevelWindows())
        if (w.title == title) return w.id;
    return 0;
}

int CountWindowsWithTitlePrefix(const QString& prefix) {
    int count = 0;
    for (const TopWindow& w : TopLevelWindows())
        if (w.title.left(prefix.size()) == prefix) ++count;
    return count;
}

std::optional<QSize> WindowSize(quint32 window) {
    if (window == 0) return std::nullopt;
    Connection conn;
    if (!conn.c) return std::nullopt;
    auto geo = Own(xcb_get_geometry_reply(conn.c, xcb_get_geometry(conn.c, window), nullptr));
    if (!geo) return std::nullopt;
    return QSize(geo->width, geo->height);
}

} // namespace platform::x11
