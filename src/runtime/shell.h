// External programs: the runtime's Shell and AppActivate.
#pragma once
#include <QString>
#include <QStringList>

namespace vb {

// Starts a program and returns its task id. The command line is the program
// (a path, or a name looked up on the PATH with App.Path/bin first) and its
// arguments, separated by blanks. Raises 53 "No se ha encontrado el archivo"
// when it can't start.
long Shell(const QString& commandLine, int windowStyle = 1);
// Runs a command line as Shell does and waits for the program to end: it looks
// whether the task still runs, sleeps 100 milliseconds and lets the event queue
// run between looks. The program's exit code is not looked at. The packing
// tools of the exchange of delivery notes run this way.
void ShellAndWait(const QString& commandLine, int windowStyle = 1);
// Whether a task started by Shell is still running.
bool TaskRunning(long taskId);
// Brings a running task to the front. Raises 5 "Llamada a procedimiento o
// argumento no válido" when the task is no longer running.
void AppActivate(long taskId);
// The first of these programs found on the PATH (with App.Path/bin first), or "".
QString FindProgram(const QStringList& candidates);

} // namespace vb
