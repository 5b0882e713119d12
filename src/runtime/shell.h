// External programs: the runtime's Shell and AppActivate.
#pragma once
#include <QString>
#include <QStringList>

namespace vb {

// Starts a program (looked up on the PATH, with App.Path/bin first) and returns
// its task id. Raises 53 "No se ha encontrado el archivo" when it can't start.
long Shell(const QString& program, int windowStyle = 1);
// Brings a running task to the front. Raises 5 "Llamada a procedimiento o
// argumento no válido" when the task is no longer running.
void AppActivate(long taskId);
// The first of these programs found on the PATH (with App.Path/bin first), or "".
QString FindProgram(const QStringList& candidates);

} // namespace vb
