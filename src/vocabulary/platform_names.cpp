#include "vexor/vocabulary/platform_names.h"

#include <array>

#include "vocabulary/name_table.h"

namespace {

constexpr auto kCpus = std::to_array<std::string_view>(
    {"Unknown", "CPU-A1", "CPU-A2", "CPU-B1", "CPU-B2", "CPU-C1", "CPU-C2"});
static_assert(kCpus.size() == CPU_ID_C2 + 1);

constexpr auto kProducts =
    std::to_array<std::string_view>({"Unknown", "Desktop", "Mobile", "Server", "Embedded"});
static_assert(kProducts.size() == PRODUCT_TYPE_EMBEDDED + 1);

constexpr auto kControllers =
    std::to_array<std::string_view>({"Unknown", "PCH-A1", "PCH-B1", "PCH-C1"});
static_assert(kControllers.size() == PCH_LPC_C1 + 1);

constexpr auto kGraphics =
    std::to_array<std::string_view>({"Unknown", "DGFX-A1", "DGFX-B1", "DGFX-C1"});
static_assert(kGraphics.size() == DGFX_TYPE_C1 + 1);

constexpr auto kAcpiTables = std::to_array<std::string_view>({
    "APIC", "BERT", "BGRT", "CPEP", "DBG2", "DMAR", "DSDT", "ECDT", "EINJ", "ERST", "FACP", "FACS",
    "FPDT", "GTDT", "HEST", "HPET", "LPIT", "MCFG", "MPST", "MSCT", "NFIT", "PCCT", "PMTT", "PPTT",
    "PSDT", "RASF", "RSDT", "SBST", "SDEI", "SLIT", "SRAT", "SSDT", "TPM2", "UEFI", "WAET", "XSDT",
});
static_assert(kAcpiTables.size() == ACPI_TABLE_UNKNOWN && vexor::AllDistinct(kAcpiTables));

}  // namespace

const char* GetCpuNameById(int id) { return vexor::NameOf(kCpus, id); }

CpuId GetCpuIdByName(std::string_view name) { return vexor::ValueOf(kCpus, name, CPU_ID_UNKNOWN); }

DgfxType ParserDgfxType(std::string_view name) {
  return vexor::ValueOf(kGraphics, name, DGFX_TYPE_UNKNOWN);
}

const char* GetAcpiString(int table) { return vexor::NameOf(kAcpiTables, table); }

ACPI_TABLE GetAcpiEnum(std::string_view signature) {
  return vexor::ValueOf(kAcpiTables, signature, ACPI_TABLE_UNKNOWN);
}

namespace vexor {

const char* GetProductTypeName(int type) { return NameOf(kProducts, type); }

const char* GetPchLpcTypeName(int type) { return NameOf(kControllers, type); }

const char* GetDgfxTypeName(int type) { return NameOf(kGraphics, type); }

ProductType ParseProductType(std::string_view name) {
  return ValueOf(kProducts, name, PRODUCT_TYPE_UNKNOWN);
}

PchLpcType ParsePchLpcType(std::string_view name) {
  return ValueOf(kControllers, name, PCH_LPC_UNKNOWN);
}

}  // namespace vexor
