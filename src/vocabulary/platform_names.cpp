#include "vexor/vocabulary/platform_names.h"

#include <array>

#include "vocabulary/name_table.h"

namespace vexor {

namespace {

constexpr auto kCpus = NamesBefore<Next(CPU_ID_C2)>({
    {CPU_ID_UNKNOWN, "Unknown"},
    {CPU_ID_A1, "CPU-A1"},
    {CPU_ID_A2, "CPU-A2"},
    {CPU_ID_B1, "CPU-B1"},
    {CPU_ID_B2, "CPU-B2"},
    {CPU_ID_C1, "CPU-C1"},
    {CPU_ID_C2, "CPU-C2"},
});

constexpr auto kProducts = NamesBefore<Next(PRODUCT_TYPE_EMBEDDED)>({
    {PRODUCT_TYPE_UNKNOWN, "Unknown"},
    {PRODUCT_TYPE_DESKTOP, "Desktop"},
    {PRODUCT_TYPE_MOBILE, "Mobile"},
    {PRODUCT_TYPE_SERVER, "Server"},
    {PRODUCT_TYPE_EMBEDDED, "Embedded"},
});

constexpr auto kControllers = NamesBefore<Next(PCH_LPC_C1)>({
    {PCH_LPC_UNKNOWN, "Unknown"},
    {PCH_LPC_A1, "PCH-A1"},
    {PCH_LPC_B1, "PCH-B1"},
    {PCH_LPC_C1, "PCH-C1"},
});

constexpr auto kGraphics = NamesBefore<Next(DGFX_TYPE_C1)>({
    {DGFX_TYPE_UNKNOWN, "Unknown"},
    {DGFX_TYPE_A1, "DGFX-A1"},
    {DGFX_TYPE_B1, "DGFX-B1"},
    {DGFX_TYPE_C1, "DGFX-C1"},
});

constexpr auto kAcpiTables = NamesBefore<ACPI_TABLE_UNKNOWN>({
    {ACPI_TABLE_APIC, "APIC"}, {ACPI_TABLE_BERT, "BERT"}, {ACPI_TABLE_BGRT, "BGRT"},
    {ACPI_TABLE_CPEP, "CPEP"}, {ACPI_TABLE_DBG2, "DBG2"}, {ACPI_TABLE_DMAR, "DMAR"},
    {ACPI_TABLE_DSDT, "DSDT"}, {ACPI_TABLE_ECDT, "ECDT"}, {ACPI_TABLE_EINJ, "EINJ"},
    {ACPI_TABLE_ERST, "ERST"}, {ACPI_TABLE_FACP, "FACP"}, {ACPI_TABLE_FACS, "FACS"},
    {ACPI_TABLE_FPDT, "FPDT"}, {ACPI_TABLE_GTDT, "GTDT"}, {ACPI_TABLE_HEST, "HEST"},
    {ACPI_TABLE_HPET, "HPET"}, {ACPI_TABLE_LPIT, "LPIT"}, {ACPI_TABLE_MCFG, "MCFG"},
    {ACPI_TABLE_MPST, "MPST"}, {ACPI_TABLE_MSCT, "MSCT"}, {ACPI_TABLE_NFIT, "NFIT"},
    {ACPI_TABLE_PCCT, "PCCT"}, {ACPI_TABLE_PMTT, "PMTT"}, {ACPI_TABLE_PPTT, "PPTT"},
    {ACPI_TABLE_PSDT, "PSDT"}, {ACPI_TABLE_RASF, "RASF"}, {ACPI_TABLE_RSDT, "RSDT"},
    {ACPI_TABLE_SBST, "SBST"}, {ACPI_TABLE_SDEI, "SDEI"}, {ACPI_TABLE_SLIT, "SLIT"},
    {ACPI_TABLE_SRAT, "SRAT"}, {ACPI_TABLE_SSDT, "SSDT"}, {ACPI_TABLE_TPM2, "TPM2"},
    {ACPI_TABLE_UEFI, "UEFI"}, {ACPI_TABLE_WAET, "WAET"}, {ACPI_TABLE_XSDT, "XSDT"},
});

}  // namespace

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

using namespace vexor;

const char* GetCpuNameById(int id) { return NameOf(kCpus, id); }

CpuId GetCpuIdByName(std::string_view name) { return ValueOf(kCpus, name, CPU_ID_UNKNOWN); }

DgfxType ParserDgfxType(std::string_view name) {
  return ValueOf(kGraphics, name, DGFX_TYPE_UNKNOWN);
}

const char* GetAcpiString(int table) { return NameOf(kAcpiTables, table); }

ACPI_TABLE GetAcpiEnum(std::string_view signature) {
  return ValueOf(kAcpiTables, signature, ACPI_TABLE_UNKNOWN);
}
