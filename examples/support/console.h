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

/// The library's log and progress on the terminal, for the life of the host's main function.
class HostSession {
  public:
    HostSession();
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

  private:
    ConsoleLogger console;
    ZoMasterLogger master;
    ProgressWindow window;
};

/// The host's own proof: each check is a line on the terminal, and one that fails is remembered.
class Checks {
  public:
    void operator()(const std::string& what, bool result);
    bool Good() const { return good; }

  private:
    bool good = true;
};
