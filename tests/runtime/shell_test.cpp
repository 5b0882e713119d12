// External programs: a command line with its arguments, and the run-and-wait
// of the packing tools, which lets the event queue run while it waits.
#include "support/print_to.h"
#include "runtime/app.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/shell.h"
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

class ShellTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    vb::InstalledEnvironment env{{.programFolder = dir.path()}};

    // A tool that sleeps and then writes its arguments to a file.
    QString tool(const QString& name, const QString& seconds) {
        const QString path = dir.filePath(name);
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(("#!/bin/sh\nsleep " + seconds + "\necho \"$@\" > \"$(dirname \"$0\")/args.txt\"\n").toUtf8());
        f.close();
        f.setPermissions(f.permissions() | QFileDevice::ExeOwner);
        return path;
    }
    QString read(const QString& name) {
        QFile f(dir.filePath(name));
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
    }
};

TEST_F(ShellTest, RunAndWaitReturnsOnlyWhenTheToolHasEnded) {
    const QString pkzip = tool("pkzip", "0.3");
    QElapsedTimer t;
    t.start();
    vb::ShellAndWait(pkzip + " -ex " + dir.filePath("pedido.jpg") + " " + dir.filePath("pedido?.zip"));
    EXPECT_GE(t.elapsed(), 300);
    EXPECT_EQ(read("args.txt"), "-ex " + dir.filePath("pedido.jpg") + " " + dir.filePath("pedido?.zip") + "\n");
}

TEST_F(ShellTest, EventsRunWhileItWaits) {
    const QString pkzip = tool("pkzip", "0.4");
    bool ticked = false;
    QTimer::singleShot(50, [&] { ticked = true; });
    vb::ShellAndWait(pkzip);
    EXPECT_TRUE(ticked);
}

TEST_F(ShellTest, ShellDoesNotWait) {
    const QString pkzip = tool("pkzip", "0.5");
    const long task = vb::Shell(pkzip + " uno");
    EXPECT_TRUE(vb::TaskRunning(task));
    EXPECT_EQ(read("args.txt"), "");
    QElapsedTimer t;
    t.start();
    while (vb::TaskRunning(task) && t.elapsed() < 5000) QThread::msleep(20);
    EXPECT_FALSE(vb::TaskRunning(task));
    EXPECT_EQ(read("args.txt"), "uno\n");
}

TEST_F(ShellTest, AMissingToolIsError53) {
    try {
        vb::ShellAndWait(dir.filePath("pkunzip") + " -e -o pedido.jpg");
        FAIL() << "no error";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 53);
        EXPECT_EQ(e.Description, "No se ha encontrado el archivo");
    }
}

} // namespace
