// Calculadora needs a calculator on the machine: the setup installs one that
// the program finds on the search path.
#include "core/mdi.h"
#include "runtime/shell.h"

#include <gtest/gtest.h>

TEST(Calculadora, TheSetUpMachineHasACalculatorTheProgramFinds) {
    const QString found = vb::FindProgram(vel::Calculadoras());
    EXPECT_FALSE(found.isEmpty()) << "none of " << vel::Calculadoras().join(", ").toStdString()
                                  << " is on the PATH: run scripts/setup.sh";
}
