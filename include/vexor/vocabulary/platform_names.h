// Names of the processors, products, platform controllers, discrete graphics and firmware tables of
// the machines that the suite runs on.
//
// The names are the suite's own. They are accepted exactly as they are returned. Any thread may
// call.
#pragma once

#include <cstdint>
#include <string_view>

#include "vexor/export.h"

enum CpuId : std::int32_t {
  CPU_ID_UNKNOWN = 0,
  CPU_ID_A1,
  CPU_ID_A2,
  CPU_ID_B1,
  CPU_ID_B2,
  CPU_ID_C1,
  CPU_ID_C2,
};

enum ProductType : std::int32_t {
  PRODUCT_TYPE_UNKNOWN = 0,
  PRODUCT_TYPE_DESKTOP,
  PRODUCT_TYPE_MOBILE,
  PRODUCT_TYPE_SERVER,
  PRODUCT_TYPE_EMBEDDED,
};

enum PchLpcType : std::int32_t {
  PCH_LPC_UNKNOWN = 0,
  PCH_LPC_A1,
  PCH_LPC_B1,
  PCH_LPC_C1,
};

enum DgfxType : std::int32_t {
  DGFX_TYPE_UNKNOWN = 0,
  DGFX_TYPE_A1,
  DGFX_TYPE_B1,
  DGFX_TYPE_C1,
};

// Firmware tables; their names are their signatures.
enum ACPI_TABLE : std::int32_t {
  ACPI_TABLE_APIC = 0,
  ACPI_TABLE_BERT,
  ACPI_TABLE_BGRT,
  ACPI_TABLE_CPEP,
  ACPI_TABLE_DBG2,
  ACPI_TABLE_DMAR,
  ACPI_TABLE_DSDT,
  ACPI_TABLE_ECDT,
  ACPI_TABLE_EINJ,
  ACPI_TABLE_ERST,
  ACPI_TABLE_FACP,
  ACPI_TABLE_FACS,
  ACPI_TABLE_FPDT,
  ACPI_TABLE_GTDT,
  ACPI_TABLE_HEST,
  ACPI_TABLE_HPET,
  ACPI_TABLE_LPIT,
  ACPI_TABLE_MCFG,
  ACPI_TABLE_MPST,
  ACPI_TABLE_MSCT,
  ACPI_TABLE_NFIT,
  ACPI_TABLE_PCCT,
  ACPI_TABLE_PMTT,
  ACPI_TABLE_PPTT,
  ACPI_TABLE_PSDT,
  ACPI_TABLE_RASF,
  ACPI_TABLE_RSDT,
  ACPI_TABLE_SBST,
  ACPI_TABLE_SDEI,
  ACPI_TABLE_SLIT,
  ACPI_TABLE_SRAT,
  ACPI_TABLE_SSDT,
  ACPI_TABLE_TPM2,
  ACPI_TABLE_UEFI,
  ACPI_TABLE_WAET,
  ACPI_TABLE_XSDT,
  ACPI_TABLE_UNKNOWN,
};

// Returns the name of a value ("CPU-A1"); "Unknown" for the value 0, empty text for a value without
// a name.
VEXOR_EXPORT const char* GetCpuNameById(int id);

// Return the value of a name; for any other text the enumeration's unknown value, 0.
VEXOR_EXPORT CpuId GetCpuIdByName(std::string_view name);
VEXOR_EXPORT DgfxType ParserDgfxType(std::string_view name);

// Returns the four characters of a table's signature, empty text for a value without one.
VEXOR_EXPORT const char* GetAcpiString(int table);

// Returns the table of a signature, ACPI_TABLE_UNKNOWN for any other text.
VEXOR_EXPORT ACPI_TABLE GetAcpiEnum(std::string_view signature);

namespace vexor {

// Return names in the same way as GetCpuNameById.
VEXOR_EXPORT const char* GetProductTypeName(int type);
VEXOR_EXPORT const char* GetPchLpcTypeName(int type);
VEXOR_EXPORT const char* GetDgfxTypeName(int type);

// Return values in the same way as GetCpuIdByName.
VEXOR_EXPORT ProductType ParseProductType(std::string_view name);
VEXOR_EXPORT PchLpcType ParsePchLpcType(std::string_view name);

}  // namespace vexor
