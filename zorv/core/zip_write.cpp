#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "zorv/core/zip.h"
#include "zorv/core/zip_state.h"

using zorv::detail::FileHandle;
using zorv::detail::FileSink;
using zorv::detail::HandleSink;
using zorv::detail::kWritingTag;
using zorv::detail::MemorySink;
using zorv::detail::ZipDirection;
using zorv::detail::ZipSink;
using zorv::detail::ZipWriter;

namespace {

constinit ZipDirection writing(kWritingTag);

HZIP NewZip(std::unique_ptr<ZipSink> sink) {
    auto zip = std::make_unique<ZoZip>();
    zip->tag = kWritingTag;
    zip->writer = std::make_unique<ZipWriter>(std::move(sink));
    if (!zip->writer->IsOpen()) return writing.Fail(eZoZipNoMemory);
    writing.Keep(eZoZipOk);
    return zip.release();
}

template <class Operation>
std::uint32_t OnWriter(HZIP zip, Operation operation) {
    return writing.Run(zip, [&](ZoZip& open) { return operation(*open.writer); });
}

eZoZipResult AddFile(ZipWriter& writer, const wchar_t* name, const wchar_t* file) {
    const std::filesystem::path path = zorv::detail::NativePath(file);
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(path, error);
    std::ifstream stream(path, std::ios::binary);
    if (error || !stream) return eZoZipNoFile;
    const auto written = std::filesystem::last_write_time(path, error);
    const std::time_t time =
        error ? std::time(nullptr)
              : std::chrono::system_clock::to_time_t(std::chrono::time_point_cast<std::chrono::system_clock::duration>(
                    std::chrono::file_clock::to_sys(written)));
    const auto source = [&stream](void* target, std::size_t room) -> std::int64_t {
        stream.read(static_cast<char*>(target), static_cast<std::streamsize>(room));
        return stream.bad() ? -1 : static_cast<std::int64_t>(stream.gcount());
    };
    return writer.AddStream(name, source, size, time);
}

std::uint32_t AddFromHandle(HZIP zip, const wchar_t* name, void* handle, std::optional<std::uint64_t> size) {
    return OnWriter(zip, [&](ZipWriter& writer) {
        if (!name || !handle) return eZoZipArguments;
        const FileHandle file(handle);
        const auto source = [&file](void* target, std::size_t room) { return file.Read(target, room); };
        return writer.AddStream(name, source, size, std::time(nullptr));
    });
}

}  // namespace

std::uint32_t zorv::detail::LastZipResult() {
    return writing.LastResult();
}

HZIP CreateZip(void* memory, unsigned int size, const char* password) {
    if (size == 0 || password) return writing.Fail(eZoZipArguments);
    return NewZip(std::make_unique<MemorySink>(memory, size));
}

HZIP CreateZip(const wchar_t* file, const char* password) {
    if (!file || !*file || password) return writing.Fail(eZoZipArguments);
    auto sink = std::make_unique<FileSink>(file);
    return sink->IsOpen() ? NewZip(std::move(sink)) : writing.Fail(eZoZipNoFile);
}

HZIP CreateZipHandle(void* handle, const char* password) {
    if (!handle || password) return writing.Fail(eZoZipArguments);
    return NewZip(std::make_unique<HandleSink>(handle));
}

std::uint32_t ZipAdd(HZIP zip, const wchar_t* name, const wchar_t* file) {
    return OnWriter(zip,
                    [&](ZipWriter& writer) { return name && file ? AddFile(writer, name, file) : eZoZipArguments; });
}

std::uint32_t ZipAdd(HZIP zip, const wchar_t* name, const void* memory, unsigned int size) {
    return OnWriter(zip, [&](ZipWriter& writer) {
        return name && (memory || size == 0) ? writer.AddBytes(name, memory, size, std::time(nullptr))
                                             : eZoZipArguments;
    });
}

std::uint32_t ZipAddFolder(HZIP zip, const wchar_t* name) {
    return OnWriter(
        zip, [&](ZipWriter& writer) { return name ? writer.AddFolder(name, std::time(nullptr)) : eZoZipArguments; });
}

std::uint32_t ZipAddHandle(HZIP zip, const wchar_t* name, void* handle) {
    return AddFromHandle(zip, name, handle, std::nullopt);
}

std::uint32_t ZipAddHandle(HZIP zip, const wchar_t* name, void* handle, unsigned int size) {
    return AddFromHandle(zip, name, handle, size);
}

std::uint32_t ZipGetMemory(HZIP zip, void** base, unsigned long* size) {
    if (base) *base = nullptr;
    if (size) *size = 0;
    return OnWriter(zip, [&](ZipWriter& writer) {
        MemorySink* memory = writer.Memory();
        if (!memory) return eZoZipNotInMemory;
        const eZoZipResult result = writer.End();
        if (result != eZoZipOk) return result;
        if (base) *base = memory->Data();
        if (size) *size = static_cast<unsigned long>(memory->End());
        return eZoZipOk;
    });
}

std::uint32_t CloseZipZ(HZIP zip) {
    const std::uint32_t result = OnWriter(zip, [](ZipWriter& writer) { return writer.Close(); });
    if (IsZipHandleZ(zip)) const std::unique_ptr<ZoZip> freed(zip);
    return result;
}

bool IsZipHandleZ(HZIP zip) {
    return writing.Has(zip);
}
