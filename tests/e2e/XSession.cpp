#include "XSession.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <QThread>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {
template <typename T> std::unique_ptr<T, decltype(&std::free)> Own(T* p) {
    return std::unique_ptr<T, decltype(&std::free)>(p, &std::free);
}
} // namespace

bool WriteCrlfLines(const QString& path, const QStringList& lines) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    const QByteArray bytes = (lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toUtf8();
    return f.write(bytes) == bytes.size();
}

bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < limit.count()) {
        if (condition()) return true;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(50);
    }
    return condition();
}

XSession::XSession() {
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (xvfb.isEmpty()) return;
    // The server picks a free display and tells us its number.
    xvfb_.start(xvfb, {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                       QStringLiteral("0"), QStringLiteral("1280x800x24"),
                       QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    if (!xvfb_.waitForStarted(10000)) return;
    QByteArray out;
    WaitFor(
        [&] {
            xvfb_.waitForReadyRead(50);
            out += xvfb_.readAllStandardOutput();
            return out.contains('\n');
        },
        std::chrono::seconds(15));
    bool okNumber = false;
    const int number = out.trimmed().toInt(&okNumber);
    if (!okNumber) return;
    display_ = QStringLiteral(":%1").arg(number);
    xcb_connection_t* c = xcb_connect(display_.toUtf8().constData(), nullptr);
    if (xcb_connection_has_error(c)) {
        xcb_disconnect(c);
        return;
    }
    conn_ = c;
    root_ = xcb_setup_roots_iterator(xcb_get_setup(conn_)).data->root;
}

XSession::~XSession() {
    for (auto& p : programs_) {
        if (p->state() != QProcess::NotRunning) {
            p->kill();
            p->waitForFinished(5000);
        }
    }
    if (conn_) xcb_disconnect(conn_);
    if (xvfb_.state() != QProcess::NotRunning) {
        xvfb_.terminate();
        if (!xvfb_.waitForFinished(5000)) {
            xvfb_.kill();
            xvfb_.waitForFinished(5000);
        }
    }
}

QString XSession::storeFile() const {
    return config_.path() + QStringLiteral("/Marrowfield/Tessaview.ini");
}

void XSession::writeStore(const QString& iniText) {
    QDir().mkpath(config_.path() + QStringLiteral("/Marrowfield"));
    QFile f(storeFile());
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate)) f.write(iniText.toUtf8());
}

QProcess* XSession::start(const QStringList& args, const QProcessEnvironment& extra) {
    return launch(QStringLiteral(TESSAVIEW_BINARY), args, extra);
}

QProcess* XSession::startWithFileRights(const QStringList& args) {
    if (geteuid() != 0) return start(args);
    const QString drop = QStringLiteral("-dac_override,-dac_read_search");
    return launch(QStringLiteral("setpriv"),
                  QStringList{QStringLiteral("--bounding-set=") + drop,
                              QStringLiteral("--inh-caps=") + drop,
                              QStringLiteral(TESSAVIEW_BINARY)} +
                      args,
                  QProcessEnvironment());
}

QProcess* XSession::launch(const QString& program, const QStringList& args,
                           const QProcessEnvironment& extra) {
    auto p = std::make_unique<QProcess>();
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), display_);
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), config_.path());
    env.insert(extra);
    p->setProcessEnvironment(env);
    p->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    p->start(program, args);
    p->waitForStarted(10000);
    programs_.push_back(std::move(p));
    return programs_.back().get();
}

int XSession::run(const QString& program, const QStringList& args) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), display_);
    p.setProcessEnvironment(env);
    p.start(program, args);
    if (!p.waitForFinished(15000)) {
        p.kill();
        p.waitForFinished(5000);
        return -1;
    }
    return p.exitCode();
}

QString XSession::title(xcb_window_t w) {
    auto r = Own(xcb_get_property_reply(
        conn_, xcb_get_property(conn_, 0, w, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 256),
        nullptr));
    if (!r || xcb_get_property_value_length(r.get()) <= 0) return QString();
    return QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(r.get())),
                             xcb_get_property_value_length(r.get()));
}

std::vector<xcb_window_t> XSession::children(xcb_window_t w) {
    auto tree = Own(xcb_query_tree_reply(conn_, xcb_query_tree(conn_, w), nullptr));
    if (!tree) return {};
    xcb_window_t* kids = xcb_query_tree_children(tree.get());
    return std::vector<xcb_window_t>(kids, kids + xcb_query_tree_children_length(tree.get()));
}

std::vector<xcb_window_t> XSession::matching(const QString& wanted, bool mappedOnly) {
    std::vector<xcb_window_t> found;
    for (xcb_window_t w : children(root_)) {
        if (title(w) != wanted) continue;
        if (mappedOnly) {
            auto attrs = Own(xcb_get_window_attributes_reply(
                conn_, xcb_get_window_attributes(conn_, w), nullptr));
            if (!attrs || attrs->map_state != XCB_MAP_STATE_VIEWABLE) continue;
        }
        found.push_back(w);
    }
    return found;
}

xcb_window_t XSession::findWindow(const QString& wanted, bool mappedOnly) {
    auto found = matching(wanted, mappedOnly);
    return found.empty() ? 0 : found.front();
}

int XSession::countWindows(const QString& wanted, bool mappedOnly) {
    return static_cast<int>(matching(wanted, mappedOnly).size());
}

QSize XSession::windowSize(xcb_window_t w) {
    auto geo = Own(xcb_get_geometry_reply(conn_, xcb_get_geometry(conn_, w), nullptr));
    return geo ? QSize(geo->width, geo->height) : QSize();
}

xcb_window_t XSession::createWindow(const QString& wanted, int width, int height) {
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(conn_)).data;
    xcb_window_t w = xcb_generate_id(conn_);
    uint32_t values[] = {screen->black_pixel};
    xcb_create_window(conn_, XCB_COPY_FROM_PARENT, w, root_, 10, 10, static_cast<uint16_t>(width),
                      static_cast<uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      screen->root_visual, XCB_CW_BACK_PIXEL, values);
    const QByteArray t = wanted.toUtf8();
    xcb_change_property(conn_, XCB_PROP_MODE_REPLACE, w, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        static_cast<uint32_t>(t.size()), t.constData());
    xcb_map_window(conn_, w);
    xcb_flush(conn_);
    return w;
}

void XSession::resizeWindow(xcb_window_t w, int width, int height) {
    uint32_t values[] = {static_cast<uint32_t>(width), static_cast<uint32_t>(height)};
    xcb_configure_window(conn_, w, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    xcb_flush(conn_);
}

void XSession::destroyWindow(xcb_window_t w) {
    xcb_destroy_window(conn_, w);
    xcb_flush(conn_);
}
