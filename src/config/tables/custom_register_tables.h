// The kinds of register items under "CustomConfiguration", in the order of a written file.
#pragma once

#include "config/tables/option_table.h"
#include "vexor/config/custom_registers.h"

namespace vexor {

// Type-erased access to a list of records, so that one loop serves the lists of all item types.
struct RecordList {
  void (*clear)(_CUSTOM_XMLCFG&);
  ConfigRecord& (*append)(_CUSTOM_XMLCFG&);
  std::size_t (*size)(const _CUSTOM_XMLCFG&);
  const ConfigRecord& (*at)(const _CUSTOM_XMLCFG&, std::size_t);
  std::string ConfigRecord::*item_text;
};

template <auto kList>
consteval RecordList ListOf() {
  using Item = typename MemberOf<decltype(kList)>::Type::value_type;
  return {
      .clear = [](_CUSTOM_XMLCFG& cfg) { (cfg.*kList).clear(); },
      .append = [](_CUSTOM_XMLCFG& cfg) -> ConfigRecord& { return (cfg.*kList).emplace_back(); },
      .size = [](const _CUSTOM_XMLCFG& cfg) { return (cfg.*kList).size(); },
      .at = [](const _CUSTOM_XMLCFG& cfg, std::size_t i) -> const ConfigRecord& {
        return (cfg.*kList)[i];
      },
      .item_text = static_cast<std::string ConfigRecord::*>(&Item::ItemText),
  };
}

namespace registers {

template <class Item>
constexpr OptionOf<Item> Field(std::string_view name, std::string Item::*home,
                               std::string_view about, Syntax syntax = Syntax::kFreeText) {
  return {.name = name, .text = home, .syntax = syntax, .about = about};
}
template <class Item>
constexpr OptionOf<Item> AndMask() {
  return Field("AndMask", &Item::AndMask, "Bits that the write keeps.", Syntax::kMask);
}
template <class Item>
constexpr OptionOf<Item> OrMask() {
  return Field("OrMask", &Item::OrMask, "Bits that the write sets.", Syntax::kMask);
}
template <class Item>
constexpr OptionOf<Item> Offset() {
  return Field("Offset", &Item::Offset, "Offset of the register.", Syntax::kAddress);
}
template <class Item>
constexpr OptionOf<Item> Address() {
  return Field("Address", &Item::Address, "Address of the register.", Syntax::kAddress);
}
template <class Item>
constexpr OptionOf<Item> Pkg() {
  return Field("Pkg", &Item::Pkg, "Packages to write to.");
}
template <class Item>
constexpr OptionOf<Item> Core() {
  return Field("CORE", &Item::CORE, "Cores to write to.");
}

inline constexpr auto kMsr = Finish(Options<_MSR_ITEM>({
    Address<_MSR_ITEM>(),
    AndMask<_MSR_ITEM>(),
    OrMask<_MSR_ITEM>(),
    Pkg<_MSR_ITEM>(),
    Field("Module", &_MSR_ITEM::Module, "Modules to write to."),
    Core<_MSR_ITEM>(),
}));
inline constexpr auto kMmio = Finish(
    Options<_MMIO_ITEM>({Offset<_MMIO_ITEM>(), AndMask<_MMIO_ITEM>(), OrMask<_MMIO_ITEM>()}));
inline constexpr auto kP2sb = Finish(Options<_P2SB_MMIO_ITEM>({
    Field("Port", &_P2SB_MMIO_ITEM::Port, "Sideband port.", Syntax::kAddress),
    Address<_P2SB_MMIO_ITEM>(),
    AndMask<_P2SB_MMIO_ITEM>(),
    OrMask<_P2SB_MMIO_ITEM>(),
}));
inline constexpr auto kPcie = Finish(Options<_PCIE_ITEM>({
    Field("Segment", &_PCIE_ITEM::Segment, "PCI segment.", Syntax::kAddress),
    Field("Bus", &_PCIE_ITEM::Bus, "PCI bus.", Syntax::kAddress),
    Field("Device", &_PCIE_ITEM::Device, "PCI device.", Syntax::kAddress),
    Field("Function", &_PCIE_ITEM::Function, "PCI function.", Syntax::kAddress),
    Offset<_PCIE_ITEM>(),
    AndMask<_PCIE_ITEM>(),
    OrMask<_PCIE_ITEM>(),
}));
inline constexpr auto kCrb = Finish(Options<_CRB_ITEM>({
    Address<_CRB_ITEM>(),
    AndMask<_CRB_ITEM>(),
    OrMask<_CRB_ITEM>(),
    Field("Type", &_CRB_ITEM::Type, "Kind of the register."),
    Pkg<_CRB_ITEM>(),
    Core<_CRB_ITEM>(),
}));
inline constexpr auto kIosf = Finish(Options<_IOSF_ITEM>({
    Field("Port", &_IOSF_ITEM::Port, "Sideband port.", Syntax::kAddress),
    Field("Register", &_IOSF_ITEM::Register, "Register of the port.", Syntax::kAddress),
    AndMask<_IOSF_ITEM>(),
    OrMask<_IOSF_ITEM>(),
}));
inline constexpr auto kMailbox = Finish(Options<_MAILBOX_ITEM>({
    Field("Command", &_MAILBOX_ITEM::Command, "Mailbox command.", Syntax::kAddress),
    Field("Sub-Command", &_MAILBOX_ITEM::Sub_Command, "Sub-command of the command.",
          Syntax::kAddress),
    Field("Value", &_MAILBOX_ITEM::Value, "Value to send.", Syntax::kAddress),
    Field("Type", &_MAILBOX_ITEM::Type, "Kind of the mailbox."),
    Field("ReadWriteType", &_MAILBOX_ITEM::ReadWriteType, "Whether the command reads or writes."),
    Field("Offset", &_MAILBOX_ITEM::Offset, "Offset of the mailbox.", Syntax::kAddress),
}));

}  // namespace registers

// A container element and the items in it.
struct CustomTableRow {
  std::string_view container;
  std::string_view item;
  std::string_view about;  // one sentence
  std::span<const OptionRow> options;
  RecordList list;
};

inline constexpr CustomTableRow kCustomTables[] = {
    {"MSR_CFG", "MSR", "Model-specific registers.", registers::kMsr,
     ListOf<&_CUSTOM_XMLCFG::MSR_CFG>()},
    {"PCIE_CFG", "PCIE", "Registers in the PCI configuration space.", registers::kPcie,
     ListOf<&_CUSTOM_XMLCFG::PCIE_CFG>()},
    {"PMC-MMIO", "MMIO", "Registers of the power-management controller.", registers::kMmio,
     ListOf<&_CUSTOM_XMLCFG::PMC_MMIO>()},
    {"GT-MMIO", "MMIO", "Graphics registers.", registers::kMmio,
     ListOf<&_CUSTOM_XMLCFG::GT_MMIO>()},
    {"P2SB-MMIO", "MMIO", "Registers behind the sideband bridge.", registers::kP2sb,
     ListOf<&_CUSTOM_XMLCFG::P2SB_MMIO>()},
    {"ISP-MMIO", "MMIO", "Image-processing registers.", registers::kMmio,
     ListOf<&_CUSTOM_XMLCFG::ISP_MMIO>()},
    {"MMIO", "MMIO", "Memory-mapped registers.", registers::kMmio, ListOf<&_CUSTOM_XMLCFG::MMIO>()},
    {"CRBCFG", "CRB", "CRB registers.", registers::kCrb, ListOf<&_CUSTOM_XMLCFG::CRBCFG>()},
    {"IOSFCFG", "IOSF", "IOSF registers.", registers::kIosf, ListOf<&_CUSTOM_XMLCFG::IOSFCFG>()},
    {"MailBoxCfg", "MailBox", "Mailbox commands.", registers::kMailbox,
     ListOf<&_CUSTOM_XMLCFG::MailBoxCfg>()},
};

}  // namespace vexor
