#pragma once

// What holds for every record that has a keyword form and an archive form.

#include <cstddef>
#include <functional>
#include <sstream>
#include <string>

#include "require.h"
#include "tests/support/archive_item.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"

/// Calls `read` as the handler of a text that stands in no block; false when it was refused.
template <class Read>
bool ReadBareText(const std::string& text, Read read) {
    std::stringbuf source(text);
    ZoReader reader(L"");
    std::istream& stream = reader.stream;
    stream.rdbuf(&source);
    ZoReaderObject* object = reader.RegisterObject(ZoReaderObject());
    try {
        reader.ParseForToken();
        read(object);
    } catch (const ZoParserStatus&) {
        return false;
    }
    return true;
}

/// The record that `make` makes, read from the block `text`, and how many read errors there were.
template <class Make>
auto ReadFromText(Make make, const std::string& text, int& errors) {
    auto record = make();
    errors = ReadBlock(text, [&record](ZoReaderObject* object) { Require(record.Read(object) == 1); });
    return record;
}

/// What was read is written and comes back; the first writing may round and drop what has no text, later ones not.
template <class Make, class Record>
void RequireTextComesBack(Make make, const Record& record) {
    const std::string first = WrittenText(record);
    if (first.find("inf") != first.npos || first.find("nan") != first.npos) return;
    int errors = 0;
    const std::string second = WrittenText(ReadFromText(make, first, errors));
    Require(errors == 0);
    Require(WrittenText(ReadFromText(make, second, errors)) == second && errors == 0);
}

/// The list that the bytes make has no more records than they hold, and what it writes comes back. Calls `use` for the
/// first records.
template <class List, class Use>
void CheckArchive(const std::string& bytes, std::size_t smallestRecord, Use use) {
    constexpr int kUsed = 2;
    List list;
    ReadArchiveBytes(bytes, list);
    Require(list.IsNotifyEnabled());
    Require(static_cast<std::size_t>(list.Count()) <= bytes.size() / smallestRecord);
    const std::string written = ArchiveBytes(list);
    List back;
    Require(ReadArchiveBytes(written, back) == 0 && ArchiveBytes(back) == written);
    int left = kUsed;
    for (auto* record = list.First(); record && left-- > 0; record = static_cast<decltype(record)>(record->next))
        use(*record);
}
