// The block that asks the frame to open a file at a place. It travels in
// movable global memory: allocated by the sender, freed by the frame.
#pragma once
#include <cstdint>

struct OpenRequest {
    uint32_t line;
    uint32_t column;
    uint32_t address; // nonzero when line is a hexadecimal address
    char name[260];
};

static_assert(sizeof(OpenRequest) == 272, "OpenRequest travels as a 272-byte block");
