// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QTest>

/// The test programs. The tests of a folder are one executable, because linking and starting the
/// compiler take most of the build time. Each test class runs in its own process, started by a
/// symbolic link with the name of the class.
namespace testprogram {

/// Runs a test class like main() and returns the exit status.
using Run = int (*)(int argc, char *argv[]);

/// Registers a test class under its name before main() runs.
class Registration
{
public:
    Registration(const char *name, Run run);
};

/// Runs the test class with the command line of QTest and an application of this class.
template <typename Test, typename Application> int run(int argc, char *argv[])
{
    const Application application(argc, argv);
    Application::setAttribute(Qt::AA_Use96Dpi);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace testprogram

/// Use this instead of QTEST_MAIN. Application is the application class that the test needs.
#define VASKEL_TEST(Test, Application)                                                             \
    static const testprogram::Registration registration##Test(                                     \
        #Test, &testprogram::run<Test, Application>);

/// The same for a test with its own main(), for preparations before it creates the application.
#define VASKEL_TEST_WITH_MAIN(Test, main)                                                          \
    static const testprogram::Registration registration##Test(#Test, &(main));
