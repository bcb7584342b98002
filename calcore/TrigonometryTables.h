#pragma once

#include "calcore/DoubleDouble.h"

namespace belvor {

struct SineAndCosine {
    DoubleDouble sine, cosine;
};

/// Of k/32, up to the first beyond π/4.
inline constexpr SineAndCosine sinesAndCosines[] = {
    {{0.0, 0.0}, {0x1.0p+0, 0.0}},
    {{0x1.ffeaaaeeee86fp-6, -0x1.cd406fb224ae2p-60}, {0x1.ffc00155527d3p-1, -0x1.3b54492d89b5bp-55}},
    {{0x1.ffaaaeeed4edbp-5, -0x1.2d16d32684b69p-59}, {0x1.ff0015549f4d3p-1, 0x1.328387b99426fp-55}},
    {{0x1.7f701032550e4p-4, 0x1.afc2d1800501ap-60}, {0x1.fdc06bf7e6b9bp-1, 0x1.31902b535f8dbp-55}},
    {{0x1.feaaeee86ee36p-4, -0x1.afcb2bcc6f03bp-59}, {0x1.fc015527d5bd3p-1, 0x1.b68f35094efb8p-55}},
    {{0x1.3eb312c5d66cbp-3, 0x1.47d666b66cb91p-57}, {0x1.f9c340a7cc428p-1, 0x1.c5b6b063b7462p-55}},
    {{0x1.7dc102fbaf2b5p-3, 0x1.5ab50e23c97c3p-59}, {0x1.f706bdf9ece1cp-1, -0x1.698c80c36dcb4p-55}},
    {{0x1.bc6f84edc6199p-3, 0x1.9c1a56a7b0cabp-57}, {0x1.f3cc7c3b3d16ep-1, -0x1.21a3ad28a3494p-57}},
    {{0x1.faaeed4f31577p-3, -0x1.15d88508e32b8p-57}, {0x1.f01549f7deea1p-1, 0x1.d3c1e99e5cafdp-55}},
    {{0x1.1c37d64c6b876p-2, 0x1.46076fe0dcff4p-56}, {0x1.ebe214f76efa8p-1, -0x1.02f9f12ba543ep-55}},
    {{0x1.3ad129769d3d8p-2, 0x1.03d550487839ap-63}, {0x1.e733ea0193d4p-1, -0x1.6428b3546ce13p-55}},
    {{0x1.591bc9fa2f597p-2, 0x1.7c74bac3fe0cbp-57}, {0x1.e20bf49acd6c1p-1, -0x1.660aec7ef636bp-58}},
    {{0x1.7710255764214p-2, -0x1.6ead7314bb6cep-57}, {0x1.dc6b7eb995912p-1, 0x1.4b364776dcd35p-58}},
    {{0x1.94a6be9f546c5p-2, -0x1.69ce13e683f58p-56}, {0x1.d653f073e404p-1, -0x1.76236434bec37p-55}},
    {{0x1.b1d8305321617p-2, -0x1.ae242cb99f519p-56}, {0x1.cfc6cfa52ad9fp-1, 0x1.8b5b5508f2a0dp-55}},
    {{0x1.ce9d2e3d4a51fp-2, -0x1.2fc8a12dae298p-57}, {0x1.c8c5bf8ce1a84p-1, 0x1.ab3d1a1590123p-56}},
    {{0x1.eaee8744b05fp-2, -0x1.789b43c9b027dp-58}, {0x1.c1528065b7d5p-1, -0x1.892111312e828p-55}},
    {{0x1.0362939c69955p-1, -0x1.2d8cd78397b01p-55}, {0x1.b96eeef58840ep-1, 0x1.45a3cc78fadep-58}},
    {{0x1.110d0c4b69c3bp-1, 0x1.d918998809981p-55}, {0x1.b11d04162a4c6p-1, 0x1.1dd561efbc0c2p-56}},
    {{0x1.1e7343236574cp-1, 0x1.22a3fa4f41d5ap-56}, {0x1.a85ed4373e02dp-1, 0x1.9be06385ec792p-57}},
    {{0x1.2b91dea88421ep-1, -0x1.fa371db216abp-55}, {0x1.9f368ed912f85p-1, -0x1.1d200c5791606p-55}},
    {{0x1.386597456282bp-1, -0x1.10fada93b07a8p-56}, {0x1.95a67e00cb1fdp-1, -0x1.0befda21f862dp-55}},
    {{0x1.44eb381cf386bp-1, -0x1.3ed6c1e6a5505p-55}, {0x1.8bb105a5dc9p-1, 0x1.863e03e9474c1p-55}},
    {{0x1.511f9fd7b351cp-1, -0x1.5c0e861c48831p-55}, {0x1.8158a31916d5dp-1, -0x1.de8b90b8228dep-57}},
    {{0x1.5cffc16bf8f0dp-1, 0x1.96cb370eb578ap-55}, {0x1.769fec655211fp-1, -0x1.827d5cf8c68c5p-57}},
    {{0x1.6888a4e134b2fp-1, -0x1.6b7d37644d5e6p-55}, {0x1.6b898fa9efb5dp-1, 0x1.15ac786ccf4b2p-56}},
};

/// arctan(k/32), k from 0 to 32.
inline constexpr DoubleDouble arctangents[] = {
    {0.0, 0.0},
    {0x1.ffd55bba97625p-6, -0x1.5ec431444912cp-60},
    {0x1.ff55bb72cfdeap-5, -0x1.c934d86d23f1dp-60},
    {0x1.7ee182602f10fp-4, -0x1.cfb654c0c3d98p-58},
    {0x1.fd5ba9aac2f6ep-4, -0x1.cd37686760c17p-59},
    {0x1.3d6eee8c6626cp-3, 0x1.61a3b0ce9281bp-57},
    {0x1.7b97b4bce5b02p-3, 0x1.347b0b4f881cap-58},
    {0x1.b90d7529260a2p-3, 0x1.17b10d2e0e5abp-61},
    {0x1.f5b75f92c80ddp-3, 0x1.8ab6e3cf7afbdp-57},
    {0x1.18bf5a30bf178p-2, 0x1.30ca4748b1bf9p-57},
    {0x1.362773707ebccp-2, -0x1.963a544b672d8p-57},
    {0x1.530ad9951cd4ap-2, -0x1.2566480884082p-57},
    {0x1.6f61941e4def1p-2, -0x1.c63aae6f6e918p-56},
    {0x1.8b24d394a1b25p-2, 0x1.b6d0ba3748fa8p-56},
    {0x1.a64eec3cc23fdp-2, -0x1.24dec1b50b7ffp-56},
    {0x1.c0db4c94ec9fp-2, -0x1.cc1ce70934c34p-56},
    {0x1.dac670561bb4fp-2, 0x1.a2b7f222f65e2p-56},
    {0x1.f40dd0b541418p-2, -0x1.a3992dc382a23p-57},
    {0x1.0657e94db30dp-1, -0x1.d5b495f6349e6p-56},
    {0x1.1255d9bfbd2a9p-1, -0x1.2bdaee1c0ee35p-58},
    {0x1.1e00babdefeb4p-1, -0x1.928df287a668fp-58},
    {0x1.2958e59308e31p-1, -0x1.09e73b0c6c087p-56},
    {0x1.345f01cce37bbp-1, 0x1.1021137c71102p-55},
    {0x1.3f13fb89e96f4p-1, 0x1.ecf8b492644fp-56},
    {0x1.4978fa3269ee1p-1, 0x1.2419a87f2a458p-56},
    {0x1.538f57b89061fp-1, -0x1.1bb74abda520cp-55},
    {0x1.5d58987169b18p-1, 0x1.0028e4bc5e7cap-57},
    {0x1.66d663923e087p-1, -0x1.6ea6febe8bbbap-56},
    {0x1.700a7c5784634p-1, -0x1.8c34d25aadef6p-56},
    {0x1.78f6bbd5d315ep-1, 0x1.406a08980374p-55},
    {0x1.819d0b7158a4dp-1, -0x1.bf76229d3b917p-56},
    {0x1.89ff5ff57f1f8p-1, -0x1.55b9a5e177a1bp-55},
    {0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55},
};

}   // namespace belvor
