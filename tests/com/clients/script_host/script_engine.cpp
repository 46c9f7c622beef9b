#include "script_engine.h"

#include <stdexcept>

#include "com/handles/text.h"
#include "com/handles/variant.h"
#include "text_file.h"

namespace kxjob::script_host {
namespace {

ComPointer<IActiveScript> EngineOf(const std::wstring& language) {
    CLSID engineClass{};
    ComPointer<IActiveScript> engine;
    if (FAILED(CLSIDFromProgID(language.c_str(), &engineClass)) ||
        FAILED(CoCreateInstance(engineClass, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                                engine.Receive()))) {
        throw std::runtime_error("there is no script engine '" + ToUtf8(language) + "'");
    }
    return engine;
}

void Require(HRESULT status) {
    if (FAILED(status)) throw std::runtime_error("the script engine does not start");
}

}  // namespace

ScriptEngine::ScriptEngine(const std::wstring& language, ComPointer<IDispatch> host)
    : site_(new ScriptSite(std::move(host))),
      engine_(EngineOf(language)),
      parser_(ComPointer<IActiveScriptParse>::From(engine_.Get())) {
    Require(parser_ ? S_OK : E_NOINTERFACE);
    Require(engine_->SetScriptSite(site_.Get()));
    Require(parser_->InitNew());
    Require(engine_->AddNamedItem(L"host", SCRIPTITEM_ISVISIBLE));
    Require(engine_->SetScriptState(SCRIPTSTATE_STARTED));
}

ScriptEngine::~ScriptEngine() {
    engine_->Close();
}

bool ScriptEngine::Run(const std::wstring& file) {
    const std::wstring text = ReadTextFile(file);
    Variant result;
    EXCEPINFO fault{};
    const HRESULT status =
        parser_->ParseScriptText(text.c_str(), nullptr, nullptr, nullptr, site_->BeginFile(file), 0,
                                 SCRIPTTEXT_ISVISIBLE, result.Receive(), &fault);
    return SUCCEEDED(status) && !site_->HasFault();
}

}  // namespace kxjob::script_host
