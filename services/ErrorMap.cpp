// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Windows error states and DirectX result codes as info-message ids.
#include <cstdint>

#include "KInfo.h"

namespace {

struct DxRow {
  uint32_t code;
  int id;
};

constexpr int kDxSuccess = 800;
constexpr int kDxUnknown = 930;

// Sorted by code. The ids follow the message files, not the code order.
constexpr DxRow kDxRows[] = {
    {0x80004001u, 884}, {0x80004005u, 813}, {0x8007000Eu, 867}, {0x80070057u, 824}, {0x88760005u, 801},
    {0x8876000Au, 803}, {0x88760014u, 804}, {0x88760028u, 809}, {0x88760037u, 811}, {0x8876005Au, 814},
    {0x8876005Fu, 818}, {0x88760064u, 819}, {0x8876006Eu, 820}, {0x88760078u, 822}, {0x88760082u, 823},
    {0x88760091u, 825}, {0x88760096u, 827}, {0x887600A0u, 828}, {0x887600AAu, 829}, {0x887600B4u, 830},
    {0x887600CDu, 832}, {0x887600D2u, 834}, {0x887600D4u, 837}, {0x887600D7u, 835}, {0x887600DCu, 836},
    {0x887600E1u, 842}, {0x887600E6u, 843}, {0x887600F0u, 844}, {0x887600FAu, 846}, {0x887600FFu, 860},
    {0x88760104u, 848}, {0x88760118u, 851}, {0x88760122u, 852}, {0x88760136u, 853}, {0x8876013Cu, 854},
    {0x8876013Du, 855}, {0x88760140u, 856}, {0x8876014Au, 858}, {0x8876014Fu, 863}, {0x88760154u, 864},
    {0x8876015Eu, 865}, {0x88760168u, 866}, {0x8876017Cu, 868}, {0x8876017Eu, 869}, {0x88760180u, 870},
    {0x88760183u, 872}, {0x88760190u, 808}, {0x8876019Au, 875}, {0x887601A4u, 876}, {0x887601AEu, 877},
    {0x887601B8u, 878}, {0x887601C2u, 879}, {0x887601CCu, 880}, {0x887601D6u, 881}, {0x887601E0u, 882},
    {0x887601EAu, 883}, {0x887601FEu, 885}, {0x88760208u, 886}, {0x88760219u, 887}, {0x8876021Cu, 888},
    {0x88760230u, 890}, {0x88760231u, 821}, {0x88760232u, 810}, {0x88760233u, 840}, {0x88760234u, 873},
    {0x88760235u, 841}, {0x88760236u, 874}, {0x88760237u, 807}, {0x88760238u, 833}, {0x88760239u, 845},
    {0x8876023Au, 816}, {0x8876023Bu, 815}, {0x8876023Cu, 849}, {0x8876023Du, 850}, {0x8876023Eu, 802},
    {0x8876023Fu, 831}, {0x88760240u, 839}, {0x88760241u, 871}, {0x88760242u, 847}, {0x88760243u, 826},
    {0x88760244u, 857}, {0x88760245u, 812}, {0x88760246u, 859}, {0x88760247u, 806}, {0x88760248u, 861},
    {0x88760249u, 805}, {0x8876024Au, 838}, {0x8876024Bu, 889}, {0x8876024Cu, 817}, {0x8876024Du, 862},
    {0x887602BCu, 891}, {0x887602BDu, 892}, {0x887602C6u, 895}, {0x887602C7u, 896}, {0x887602C8u, 897},
    {0x887602C9u, 898}, {0x887602CAu, 893}, {0x887602CBu, 894}, {0x887602CCu, 899}, {0x887602CDu, 900},
    {0x887602D0u, 901}, {0x887602D1u, 904}, {0x887602D2u, 905}, {0x887602D3u, 906}, {0x887602D4u, 907},
    {0x887602D5u, 908}, {0x887602D7u, 903}, {0x887602D8u, 902}, {0x887602DAu, 909}, {0x887602DBu, 910},
    {0x887602DCu, 911}, {0x887602DEu, 912}, {0x887602E4u, 913}, {0x887602E5u, 914}, {0x887602E6u, 915},
    {0x887602EEu, 916}, {0x8876030Du, 917}, {0x8876030Eu, 918}, {0x8876030Fu, 919}, {0x88760310u, 920},
    {0x88760311u, 921}, {0x88760312u, 922}, {0x88760313u, 923}, {0x88760314u, 924}, {0x88760315u, 925},
    {0x88760316u, 926}, {0x88760317u, 927}, {0x88760318u, 928}, {0x88760319u, 929},
};

}  // namespace

int KUwinerr2kwinfo(int error) { return error == 0 ? 800 : 15; }

int KUdxrval2kwinfo(long result) {
  // Results are 32-bit HRESULTs; where long is wider a caller may hand one in
  // sign-extended or not, so only the low 32 bits count.
  const uint32_t code = static_cast<uint32_t>(static_cast<unsigned long>(result));
  if (code == 0) return kDxSuccess;
  if (static_cast<int32_t>(code) > 0) return kDxUnknown;
  size_t lo = 0;
  size_t hi = sizeof kDxRows / sizeof kDxRows[0];
  while (lo < hi) {
    const size_t mid = (lo + hi) / 2;
    if (kDxRows[mid].code == code) return kDxRows[mid].id;
    if (kDxRows[mid].code < code) {
      lo = mid + 1;
    } else {
      hi = mid;
    }
  }
  return kDxUnknown;
}
