// Driving real windows in tests: letting the event queue settle, and finding a
// window's control by its name.
#pragma once
#include <QCoreApplication>
#include <QString>
#include <QWidget>
#include <gtest/gtest.h>

namespace veltest {

// Lets the posted events and what they post in turn run (focus changes, the
// events a box or a timer of zero queues), a few rounds.
inline void settle() {
    for (int i = 0; i < 6; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

// The window's control of that name and kind ("Textven(3)"); a failed
// expectation, and null, when it has none.
template <class T>
T* control(const QWidget* window, const QString& name) {
    T* c = window->findChild<T*>(name);
    EXPECT_NE(c, nullptr) << name.toStdString();
    return c;
}
template <class T>
T* control(const QWidget* window, const char* name) {
    return control<T>(window, QString::fromLatin1(name));
}

} // namespace veltest
