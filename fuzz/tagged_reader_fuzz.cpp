// A tagged text file of any bytes, read by every kind of binding: typed values, nested blocks, positional values, open
// value lists, a catch-all, and handlers that leave values over or answer that reading shall go on.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "input_file.h"
#include "require.h"

#include "zorv/core/reader.h"

namespace {

class Model : public LinkHdl {
  public:
    Model(const std::wstring& file, bool goOn) : answer(goOn), reader(file) {
        reader.SetParserErrorHdl(Link(this, &Model::Error));
        reader.SetUnknownTokenHdl(Link(this, &Model::Unknown));
        Bind([&](const ZoReaderObject& object) { reader.RegisterObject(object); });
    }

    long Block(ZoReaderObject* object) {
        CheckToken();
        Bind([&](const ZoReaderObject& inner) { object->RegisterObject(inner); });
        Require(object->DoProcess() == 1);
        return 1;
    }
    long Record(ZoReaderObject* object) {
        CheckToken();
        ZoObject record;
        record.Read(object);
        object->GetStreamParser() >> real;
        return 1;
    }
    long List(ZoReaderObject* object) {
        ZoStreamParser in = object->GetStreamParser();
        try {
            while (true) {
                unsigned int value = 0;
                in >> value;
                values.push_back(value);
            }
        } catch (const ZoParserStatus& error) {
            if (reader.GetParser().GetToken().GetType() == eZoTokenBlockEnd) return 1;
            throw ZoParserStatus(error);
        }
    }
    long Idle(ZoReaderObject* /*object*/) { return 1; }
    long Finished(ZoReaderObject* /*object*/) { return ++finished; }
    long Any(ZoReaderObject* object) {
        CheckToken();
        atEnd += reader.GetParser().GetToken().GetType() == eZoTokenEof;
        if (reader.GetParser().GetToken().GetType() != eZoTokenBlockBegin) return 1;
        object->ParseForToken();
        return Record(object);
    }
    long Error(ZoReader* /*reader*/) { return answer; }
    long Unknown(ZoReader* /*reader*/) { return answer; }

  private:
    template <class Add>
    void Bind(Add add) {
        add(ZoReaderObject("INT", &integer));
        add(ZoReaderObject("UINT", &number));
        add(ZoReaderObject("BOOL", &flag));
        add(ZoReaderObject("REAL", &real));
        add(ZoReaderObject("TEXT", &text));
        add(ZoReaderObject("NAME", &name));
        add(ZoReaderObject("BLOCK", Link(this, &Model::Block)));
        add(ZoReaderObject("RECORD", Link(this, &Model::Record), Link(this, &Model::Finished)));
        add(ZoReaderObject("LIST", Link(this, &Model::List)));
        add(ZoReaderObject("IDLE", Link(this, &Model::Idle)));
        if (answer) add(ZoReaderObject(Link(this, &Model::Any)));
    }

    void CheckToken() {
        const ZoParser& parser = reader.GetParser();
        const char* token = parser.GetToken().GetString();
        Require(std::strlen(token) < ZoParser::kLineSize);
        const bool inLine = token >= parser.lineBuffer && token < parser.lineBuffer + ZoParser::kLineSize;
        Require(inLine || *token == 0);
    }

    bool answer;
    int integer = 0;
    unsigned int number = 0;
    bool flag = false;
    double real = 0.0;
    std::string text;
    std::wstring name;
    std::vector<unsigned int> values;
    long finished = 0;

  public:
    int atEnd = 0;
    ZoReader reader;  // last, since its end calls finish handlers
};

void Read(const std::wstring& file, bool goOn, bool skipUnknown, bool simple) {
    Model model(file, goOn);
    ZoReader& reader = model.reader;
    reader.SkipUnknownToken(skipUnknown);
    reader.SetSimpleMode(simple);
    Require(reader.DoProcess(goOn) == 1);
    Require(reader.instances.Count() == 1);
    // A block that the file ends in meets the end too, with each of those around it.
    Require(model.atEnd <= ZoReader::kDeepestNesting + 1);
    for (const ZoReaderError* error = reader.GetReaderErrorList().First(); error; error = error->NextConst())
        Require(error->status != eZoParserStatusEof || skipUnknown);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile input;
    input.Write({reinterpret_cast<const char*>(data), size});
    const std::wstring file = input.Name();
    Read(file, false, true, false);
    Read(file, true, true, false);
    Read(file, true, false, false);
    Read(file, true, true, true);
    return 0;
}
