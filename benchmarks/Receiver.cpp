#include "Receiver.h"

void Receiver::OnProgress(Progress* args)
{
    total += args->step;
}
