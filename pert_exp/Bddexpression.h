#pragma once

// The chief header of the floor.
#include "pert_exp/equation.h"
#include "pert_exp/wood.h"
