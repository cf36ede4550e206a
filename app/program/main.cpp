#include <app/DBaseApp.h>

int main(int argc, char **argv)
{
    return app::runArvo(argc, argv);
}
