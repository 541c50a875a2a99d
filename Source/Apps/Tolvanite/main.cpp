#include "RunMain.h"

int main(int argc, char **argv) { return Tool::run_main(argc, argv, Tool::run_tool); }
