#include "zorv/core/runtime_linker.h"

ZoRuntimeParameter::~ZoRuntimeParameter() = default;

void ZoRuntimeParameter::SetParameter(void* value) {
    parameter = value;
}

void ZoRuntimeParameter::SetReturnvalue(void* value) {
    returnvalue = value;
}

void ZoRuntimeParameter::DestroyParameter() {}

void ZoRuntimeParameter::DestroyReturnvalue() {}

ZoRuntimeLinker& ZoRuntimeLinker::Instance() {
    static ZoRuntimeLinker linker;
    return linker;
}

bool ZoRuntimeLinker::Register(const std::string& name, const Link& link) {
    return services.emplace(name, link).second;
}

bool ZoRuntimeLinker::Remove(const std::string& name) {
    return services.erase(name) > 0;
}

bool ZoRuntimeLinker::Call(const std::string& name, ZoRuntimeParameter& block) {
    const auto found = services.find(name);
    if (found == services.end()) return false;
    const Link link = found->second;
    link.Call(&block);
    return true;
}
