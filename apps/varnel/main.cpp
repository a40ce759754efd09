// The program: makes the real platform and hands it to the logic.
#include "src/forms/Application.h"

int main()
{
    return 0;
}
