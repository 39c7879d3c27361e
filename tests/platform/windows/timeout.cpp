// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: timeout /t SECONDS /nobreak
//
// Waits like the command of this name, which wine's command interpreter lacks. First it saves its
// arguments and the update script in the folder for temporary files.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

int main(int argc, char *argv[])
{
    const std::filesystem::path folder = std::getenv("TEMP");
    std::ofstream arguments(folder / "timeout.txt");
    for (int index = 1; index < argc; ++index) {
        arguments << argv[index] << ' ';
    }
    arguments.close();
    std::error_code failure;
    std::filesystem::copy_file(folder / "Vaskel_updater.bat", folder / "running.bat", failure);
    const int seconds = argc > 2 ? std::atoi(argv[2]) : 0;
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    return 0;
}
