#pragma once

#include <rttr/registration>

// RTTR's automatic registration block under a name of the source's own, so that sources compiled
// together as one unit (the build batches them) each keep their block. Used once per source, at
// global scope, followed by the block's body.
#define TAVRIN_REGISTRATION(Name)                                                                  \
    static void TavrinRegister##Name();                                                            \
    namespace {                                                                                    \
    struct TavrinRegistrar##Name {                                                                 \
        TavrinRegistrar##Name() { TavrinRegister##Name(); }                                        \
    } const tavrinRegistrar##Name;                                                                 \
    }                                                                                              \
    static void TavrinRegister##Name()
