#pragma once

#include <map>
#include <string>

#include "zorv/core/link.h"
#include "zorv/export.h"

/// The argument block of a service that is called by name. Derive to carry more, or to own what it carries.
class ZORV_API ZoRuntimeParameter {
  public:
    ZoRuntimeParameter() = default;
    ZoRuntimeParameter(const ZoRuntimeParameter&) = default;
    ZoRuntimeParameter& operator=(const ZoRuntimeParameter&) = default;
    virtual ~ZoRuntimeParameter();

    virtual void SetParameter(void* value);
    virtual void SetReturnvalue(void* value);
    /// Here they do nothing.
    virtual void DestroyParameter();
    virtual void DestroyReturnvalue();

    void* GetParameter() const { return parameter; }
    void* GetReturnvalue() const { return returnvalue; }

    void* parameter = nullptr;
    void* returnvalue = nullptr;
};

/// Services by name: one module registers, another calls without knowing it. A Link gets the ZoRuntimeParameter*.
class ZORV_API ZoRuntimeLinker {
  public:
    ZoRuntimeLinker(const ZoRuntimeLinker&) = delete;
    ZoRuntimeLinker& operator=(const ZoRuntimeLinker&) = delete;

    /// The one of the process.
    static ZoRuntimeLinker& Instance();

    /// False, and nothing changes, when the name is taken.
    bool Register(const std::string& name, const Link& link);
    /// False for an unknown name.
    bool Remove(const std::string& name);
    /// False for an unknown name; a link that is not set counts as called. The service may remove itself.
    bool Call(const std::string& name, ZoRuntimeParameter& block);

  private:
    ZoRuntimeLinker() = default;

    std::map<std::string, Link> services;
};
