// App.Path: the folder of the program, where datos.mdb, config.ini, the error
// reports and the exchange folders live. The scenario driver and the tests point
// it at a temporary folder.
#pragma once
#include <QString>

namespace vb {

QString AppPath();
void SetAppPath(const QString& folder);

} // namespace vb
