#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "zorv/core/platform/host_services.h"

/// A host that writes down what it is asked for, installed for as long as it lives.
class RecordedHost {
  public:
    using Post = std::tuple<HWND, unsigned int, std::intptr_t, std::intptr_t>;

    RecordedHost() : former(ZoGetHostServices()) {
        ZoHostServices services;
        services.registerMessage = [](const wchar_t* name) { return NumberOf(name); };
        services.postMessage = [this](HWND window, unsigned int message, std::intptr_t first, std::intptr_t second) {
            posts.emplace_back(window, message, first, second);
            return postResult;
        };
        services.debugOutput = [this](const char* text) { narrow.emplace_back(text); };
        services.debugOutputWide = [this](const wchar_t* text) { wide.emplace_back(text); };
        services.messageBox = [this](const wchar_t* caption, const wchar_t* text) {
            boxes.emplace_back(caption, text);
        };
        services.beep = [this](int frequency, int duration) {
            beeps.emplace_back(frequency, duration);
            return beepResult;
        };
        ZoSetHostServices(services);
    }
    ~RecordedHost() { ZoSetHostServices(former); }
    RecordedHost(const RecordedHost&) = delete;
    RecordedHost& operator=(const RecordedHost&) = delete;

    /// The same number for the same name as long as the process runs, since the library remembers it.
    static unsigned int NumberOf(const std::wstring& name) {
        static std::map<std::wstring, unsigned int> numbers;
        return numbers.emplace(name, 0xc000u + static_cast<unsigned int>(numbers.size())).first->second;
    }

    std::vector<Post> posts;
    std::vector<std::string> narrow;
    std::vector<std::wstring> wide;
    std::vector<std::pair<std::wstring, std::wstring>> boxes;
    std::vector<std::pair<int, int>> beeps;
    int postResult = 1;
    bool beepResult = true;

  private:
    ZoHostServices former;
};
