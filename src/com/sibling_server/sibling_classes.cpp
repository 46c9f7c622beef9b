#include <array>
#include <cstddef>
#include <memory>
#include <optional>

#include "com/apartment/apartment_local.h"
#include "com/late/component_dispatch.h"
#include "com/server/class_table.h"
#include "defaults/configuration/configuration_file.h"
#include "defaults/configuration/default_settings.h"
#include "defaults/system/file_trace_log.h"
#include "siblings/stand_ins.h"

namespace kxjob {
namespace {

/// The identifiers of the stand-ins, fixed once and for all, in the order of `StandIns()`.
constexpr std::array<CLSID, 7> kClassIds = {{
    {0xA3C1FAA1, 0x7B30, 0x4811, {0x94, 0x99, 0xBE, 0xD6, 0xE7, 0x51, 0x55, 0x76}},
    {0xE4E2B5FE, 0x6C72, 0x4099, {0x9F, 0xF6, 0x0B, 0xCA, 0x8A, 0x08, 0x2D, 0x8C}},
    {0x4E48D670, 0xA7E4, 0x4CE9, {0x95, 0x71, 0x92, 0xC3, 0xB7, 0xA0, 0xCC, 0xBE}},
    {0x3D669FF3, 0x6506, 0x499C, {0xBE, 0x80, 0xED, 0x27, 0x3E, 0x0D, 0xAB, 0x93}},
    {0xEDA9A92B, 0x6E54, 0x4D0D, {0x93, 0x4B, 0xD8, 0x22, 0x00, 0x6E, 0xC9, 0xDD}},
    {0xDB13A703, 0x20B5, 0x4BD8, {0xB3, 0x36, 0x1C, 0x44, 0x6D, 0x73, 0xE5, 0x95}},
    {0xF62CCC45, 0xAB2A, 0x4E06, {0xAC, 0x3C, 0x6E, 0x48, 0x72, 0x54, 0x62, 0x08}},
}};

StandInParts MakeParts() {
    const DefaultSettings settings(ConfigurationDocument(ConfigurationText().value_or("")));
    return {std::make_shared<SessionCache>(),
            std::make_shared<FileTraceLog>(settings.LogFile(), settings.LogLevel())};
}

/// An apartment's sessions and log, made when its first stand-in is.
const StandInParts& Parts() {
    std::optional<StandInParts>& parts = ApartmentLocal<std::optional<StandInParts>>::Get();
    if (!parts) parts = MakeParts();
    return *parts;
}

IUnknown* Create(const ComClass& itself) {
    const auto place = static_cast<std::size_t>(&itself - ComClasses().data());
    return MakeComponentDispatch(StandIns()[place].create(Parts())).Release();
}

std::array<ComClass, kClassIds.size()> MakeTable() {
    std::array<ComClass, kClassIds.size()> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = {kClassIds[i], StandIns()[i].progId, "Stand-in for a component of the application",
                    Create};
    }
    return table;
}

}  // namespace

std::span<const ComClass> ComClasses() {
    static const auto kTable = MakeTable();
    return kTable;
}

const TypeLibraryIdentity* OwnTypeLibrary() {
    return nullptr;
}

}  // namespace kxjob
