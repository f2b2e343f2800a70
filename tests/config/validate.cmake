# Usage: cmake -DXMLLINT=... -DSCHEMA=... -DFOLDER=... -P validate.cmake
#
# Validates small documents against the schema, valid and invalid ones.

function(validate document good)
  file(WRITE ${FOLDER}/document.xml "<VEXOR>${document}</VEXOR>")
  execute_process(COMMAND ${XMLLINT} --noout --schema ${SCHEMA} ${FOLDER}/document.xml
    RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE output)
  if(good AND NOT result EQUAL 0)
    message(SEND_ERROR "refused: ${document}\n${output}")
  elseif(NOT good AND NOT result EQUAL 3)  # 3: not valid
    message(SEND_ERROR "accepted, or not looked at: ${document}\n${output}")
  endif()
endfunction()

foreach(document IN ITEMS
    ""
    "<GLOBALPM/><!-- in any order --><Version> 3.21.522.0\n</Version><GLOBALPM/>"
    "<GLOBALPM><CORE><CSTATES><ActiveTime> msec:80 </ActiveTime><KNOBS/></CSTATES></CORE></GLOBALPM>"
    "<GLOBALPM><Device><PCIe-Link-DState><ConfigState>1</ConfigState><ConfigState>2</ConfigState></PCIe-Link-DState></Device></GLOBALPM>"
    "<GLOBALPM><UNCORE><MESH-GV><arg name='-exeCycles' val='1'/><arg name='-switchTime' randVal='1-2'/></MESH-GV></UNCORE></GLOBALPM>"
    "<GLOBALPM><SYSTEM><PECI><RdPCIConfig><PCIE>0:0:31:0:0x40</PCIE></RdPCIConfig></PECI></SYSTEM></GLOBALPM>"
    "<GLOBALPM><CORE><SDC><KNOBS>Random;NoErrOnDemotion</KNOBS></SDC></CORE></GLOBALPM>"
    "<TEST_CONTROL_CFG><AutoRunCfg><GT-RC6>true</GT-RC6><SDC/></AutoRunCfg><SETTING/></TEST_CONTROL_CFG>"
    "<GLOBALCONFIGURATION><SysConfiguration><SYSTEM><KNOBS><Any>1</Any></KNOBS></SYSTEM></SysConfiguration></GLOBALCONFIGURATION>")
  validate("${document}" TRUE)
endforeach()

foreach(document IN ITEMS
    "stray text"
    "<Versoin/>"
    "<GLOBALPM><CORE><PECI/></CORE></GLOBALPM>"
    "<GLOBALPM><CORE><CSTATES><Ratios/></CSTATES></CORE></GLOBALPM>"
    "<GLOBALPM><CORE><CSTATES><ActiveTime>msec80</ActiveTime></CSTATES></CORE></GLOBALPM>"
    "<GLOBALPM><CORE><CSTATES><Log_Level>information</Log_Level></CSTATES></CORE></GLOBALPM>"
    "<GLOBALPM><CORE><CSTATES id='1'/></CORE></GLOBALPM>"
    "<GLOBALPM><SYSTEM><GSTATES><PrePostCheck>MemryCheck</PrePostCheck></GSTATES></SYSTEM></GLOBALPM>"
    "<GLOBALPM><UNCORE><MESH-GV><arg name='exeCycles' val='1'/></MESH-GV></UNCORE></GLOBALPM>"
    "<GLOBALPM><UNCORE><MESH-GV><arg val='1'/></MESH-GV></UNCORE></GLOBALPM>"
    "<TEST_CONTROL_CFG><AutoRunCfg><SDC>True</SDC></AutoRunCfg></TEST_CONTROL_CFG>"
    "<TEST_CONTROL_CFG><AutoRunCfg><SDC> true</SDC></AutoRunCfg></TEST_CONTROL_CFG>"
    "<GLOBALCONFIGURATION><SysConfiguration><CORE><CONFIG><ITM/></CONFIG></CORE></SysConfiguration></GLOBALCONFIGURATION>"
    "<GLOBALCONFIGURATION><CustomConfiguration><MSR_CFG><MSR><OrMask>two</OrMask></MSR></MSR_CFG></CustomConfiguration></GLOBALCONFIGURATION>")
  validate("${document}" FALSE)
endforeach()
