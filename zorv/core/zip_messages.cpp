#include "zorv/core/zip_messages.h"

#include <algorithm>
#include <cstring>

#include "zorv/core/zip.h"
#include "zorv/core/zip_state.h"

namespace zorv::detail {

namespace {

struct Message {
    std::uint32_t code;
    const wchar_t* wide;
    const char* narrow;
};

constexpr const char* kUnknown = "unknown zip result code";
constexpr std::uint32_t kLastResult = 1;

// The two sets differ in more than their beginnings; hosts compare both.
constexpr Message kMessages[] = {
    {eZoZipOk, L"Success", "Success"},
    {eZoZipNoDuplicate, L"Error: Couldn't duplicate handle", "Culdn't duplicate handle"},
    {eZoZipNoFile, L"Error: Couldn't create/open file", "Couldn't create/open file"},
    {eZoZipNoMemory, L"Error: Failed to allocate memory", "Failed to allocate memory"},
    {eZoZipWriteFailed, L"Error: Writing to file", "Error writing to file"},
    {eZoZipNotFound, L"Error: File not found in the compressed file", "File not found in the zipfile"},
    {eZoZipMore, L"Info:  Still more data to unzip", "Still more data to unzip"},
    {eZoZipCorrupt, L"Error: File is corrupt", "Zipfile is corrupt or not a zipfile"},
    {eZoZipReadFailed, L"Error: Reading file", "Error reading file"},
    {eZoZipPassword, L"Info: Correct password required", kUnknown},
    {eZoZipArguments, L"Caller: faulty arguments", "Caller: faulty arguments"},
    {eZoZipNotInMemory, L"Caller: can only get memory of a memory compressed file",
     "Caller: can only get memory of a memory zipfile"},
    {eZoZipMemoryFull, L"Caller: not enough space allocated for memory compressed file",
     "Caller: not enough space allocated for memory zipfile"},
    {eZoZipFailedBefore, L"Caller: there was a previous error", "Caller: there was a previous error"},
    {eZoZipEnded, L"Caller: additions to the zip have already been ended",
     "Caller: additions to the zip have already been ended"},
    {eZoZipWrongSize, L"Internalbug: the anticipated size turned out wrong",
     "Zip-bug: the anticipated size turned out wrong"},
    {eZoZipPartlyUnzipped, L"Caller: the file had already been partially uncompressed",
     "Caller: the file had already been partially unzipped"},
    {eZoZipDirection, L"Caller: mixing creation and opening", "Caller: mixing creation and opening of zip"},
    {eZoZipNotInitialised, L"Internalbug: internal initialisation not completed",
     "Zip-bug: internal initialisation not completed"},
    {eZoZipNoSeek, L"Internalbug: trying to seek the unseekable", "Zip-bug: trying to seek the unseekable"},
    {eZoZipNoChange, L"Internalbug: tried to change mind, but not allowed",
     "Zip-bug: tried to change mind, but not allowed"},
    {eZoZipFlate, L"Internalbug: an internal error during flation", "Zip-bug: an internal error during flation"},
};

const Message* FindMessage(std::uint32_t code) {
    const Message* found =
        std::find_if(std::begin(kMessages), std::end(kMessages), [code](const Message& m) { return m.code == code; });
    return found == std::end(kMessages) ? nullptr : found;
}

}  // namespace

const wchar_t* WideZipMessage(std::uint32_t code) {
    const Message* message = FindMessage(code);
    return message ? message->wide : L"   ";
}

}  // namespace zorv::detail

unsigned int FormatZipMessageZ(unsigned int code, char* buffer, unsigned int size) {
    using namespace zorv::detail;
    const Message* message = FindMessage(code == kLastResult ? LastZipResult() : code);
    const char* text = message ? message->narrow : kUnknown;
    const std::size_t length = std::strlen(text);
    if (buffer && size > 0) {
        const std::size_t copied = std::min<std::size_t>(length, size - 1);
        std::memcpy(buffer, text, copied);
        buffer[copied] = '\0';
    }
    return static_cast<unsigned int>(length);
}
