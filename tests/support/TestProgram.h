// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QTest>

/// The test programs: those of one folder are one executable, since linking and starting the
/// compiler take most of the time that a build takes. Each test class is run by a process of its
/// own, through a link to the executable that bears the name of the class.
namespace testprogram {

/// Runs one test class as main() would and returns the exit status.
using Run = int (*)(int argc, char *argv[]);

/// Enters a test class under its name before main() runs.
class Registration
{
public:
    Registration(const char *name, Run run);
};

/// Runs the test class with QTest's command line, below an application of the given class.
template <typename Test, typename Application> int run(int argc, char *argv[])
{
    const Application application(argc, argv);
    Application::setAttribute(Qt::AA_Use96Dpi);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace testprogram

/// In place of QTEST_MAIN: the test class needs the application of the given class.
#define VASKEL_TEST(Test, Application)                                                             \
    static const testprogram::Registration registration##Test(                                     \
        #Test, &testprogram::run<Test, Application>);

/// The same for a test class that prepares something before it makes its application.
#define VASKEL_TEST_WITH_MAIN(Test, main)                                                          \
    static const testprogram::Registration registration##Test(#Test, &(main));
