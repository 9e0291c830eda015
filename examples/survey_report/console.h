#pragma once

#include <zorv/zorv.h>

/// Shows log lines on the terminal.
class ConsoleLogger : public ZoLogger {
  public:
    ConsoleLogger() : ZoLogger(3) {}

    int Log(int level, const wchar_t* text) override;
};

/// Stands in for the host's main window: draws the progress messages of the library as a bar in the terminal.
/// The window registers itself for its life.
class ProgressWindow {
  public:
    ProgressWindow();
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;

    void Show();
    void Draw(int position);
    void Hide();

  private:
    int lower = 0;
    int upper = 0;
    std::string text;
};
