// The names under which commands can be bound to keys, in the order the
// Key Bindings dialog lists them. The settings file is keyed by these names.
#pragma once

struct BindingName {
    const char* name;
    unsigned id;
};

extern const BindingName g_bindingNames[];
extern const int g_bindingNameCount;
