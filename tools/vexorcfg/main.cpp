#include <iostream>

#include "vexor/vexor.h"

int main() { std::cout << "vexorcfg " << vexor::GetVersionText() << '\n'; }
