// The thirty formant voices of the "IBM" family in the order of their enumeration: six languages by five presets (adult
// man, adult woman, child, old woman, old man). The identifiers are ours and never change: settings of other programs
// may hold them.
#include "engine/HablantesIBM.h"

namespace ondalis {

namespace {

constexpr char kMotor[] = "espeak";

}  // namespace

const std::vector<HablanteIBM> &HablantesIBM() {
    // Children are heard by a small head as much as by their pitch; age by roughness, breath, a flatter melody, and a
    // lower and darker voice than the younger one's.
    static const std::vector<HablanteIBM> hablantes{
        // name, mode, LCID, language and dialect, preset, engine, language file, pitch, fluctuation, roughness,
        // breathiness, head size
        {"Reed", "9AA852F5-352E-40AE-9962-7D01A8922DE8", 1033, "1.0", 1, kMotor, "gmw/en-US", 104, 48, 0, 8, 54},
        {"Shelley", "FBADD524-6B9D-4949-92EB-9D030639D8EC", 1033, "1.0", 2, kMotor, "gmw/en-US", 194, 52, 0, 14, 34},
        {"Sandy", "CFD2A87E-EEB9-4F80-8520-D142B26EABC7", 1033, "1.0", 3, kMotor, "gmw/en-US", 278, 56, 0, 8, 14},
        {"Grandma", "7FECA85E-79C4-4411-8A7D-EF99E6FFF9F5", 1033, "1.0", 7, kMotor, "gmw/en-US", 168, 40, 18, 30, 44},
        {"Grandpa", "B1028E11-4F45-4DC5-B13C-B757F7F5F4BE", 1033, "1.0", 8, kMotor, "gmw/en-US", 86, 34, 26, 24, 64},
        {"Justin", "31675D0D-92F8-4C04-8155-142D5E512D48", 2057, "1.1", 1, kMotor, "gmw/en", 112, 44, 0, 10, 50},
        {"Jane", "0AD5DFA4-9337-4661-A1C2-284BF6DD4089", 2057, "1.1", 2, kMotor, "gmw/en", 206, 56, 0, 16, 30},
        {"Nicky", "593707D0-B8AA-4DE9-BD5C-C2A13CCCCE95", 2057, "1.1", 3, kMotor, "gmw/en", 290, 60, 0, 10, 12},
        {"Nanny", "8EF09C84-21C5-4387-B592-33F2178079A3", 2057, "1.1", 7, kMotor, "gmw/en", 176, 38, 16, 32, 42},
        {"Gramps", "D32B3966-2738-4AA5-BB98-89EF708C017F", 2057, "1.1", 8, kMotor, "gmw/en", 92, 32, 24, 26, 60},
        {"Carlos", "B19F3026-DA06-4D5B-8198-48885056234E", 1034, "2.0", 1, kMotor, "roa/es", 106, 50, 0, 10, 50},
        {"Pilar", "DA1E0C96-6C7A-4759-8204-AD5C833DC658", 1034, "2.0", 2, kMotor, "roa/es", 198, 55, 0, 15, 34},
        {"Pepe", "CC8B9821-7709-49BB-96C8-5A1174FB5AAA", 1034, "2.0", 3, kMotor, "roa/es", 282, 58, 0, 8, 14},
        {"Abuela", "70462FB3-F87A-4F65-9D6C-50B92D250117", 1034, "2.0", 7, kMotor, "roa/es", 170, 42, 18, 30, 43},
        {"Abuelo", "AC66B8DF-CC65-48D0-8480-BF131342D46B", 1034, "2.0", 8, kMotor, "roa/es", 88, 36, 25, 25, 62},
        {"Jacques", "E7488FF2-9D8D-48FE-A7F8-FE5D9DDBC997", 1036, "3.0", 1, kMotor, "roa/fr", 104, 48, 0, 12, 51},
        {"Jacqueline", "C8708B79-217A-4590-9211-5C58DC4A2706", 1036, "3.0", 2, kMotor, "roa/fr", 208, 56, 0, 18, 32},
        {"Marius", "7C2180FC-EC0B-43D4-B84D-0A7BB11A9460", 1036, "3.0", 3, kMotor, "roa/fr", 292, 60, 0, 10, 12},
        {"Mamie", "785B6E7A-BBA8-40D9-A25C-540AB35C42BC", 1036, "3.0", 7, kMotor, "roa/fr", 178, 42, 16, 33, 42},
        {"Grandpère", "88C8A755-233A-4A3E-A330-7D5337686738", 1036, "3.0", 8, kMotor, "roa/fr", 90, 36, 23, 27, 61},
        {"Max", "08C8844F-DC5C-4193-AB4F-E2CD6F37D609", 1031, "4.0", 1, kMotor, "gmw/de", 98, 44, 0, 8, 55},
        {"Gisela", "B37E399B-9854-4F53-9BB3-A02F6129570E", 1031, "4.0", 2, kMotor, "gmw/de", 192, 50, 0, 13, 36},
        {"Matti", "06843036-6151-4E9F-855E-37EDDAF4817C", 1031, "4.0", 3, kMotor, "gmw/de", 274, 54, 0, 8, 16},
        {"Oma", "548BC67C-4A63-49EC-A160-4D93F452F4F9", 1031, "4.0", 7, kMotor, "gmw/de", 164, 38, 19, 29, 46},
        {"Opa", "0C04746B-1436-41E5-B3C9-E2CFB7561C4B", 1031, "4.0", 8, kMotor, "gmw/de", 84, 30, 28, 23, 65},
        {"Enrico", "CF27DB39-F526-487D-B7E4-66DDBE3DB8A8", 1040, "5.0", 1, kMotor, "roa/it", 110, 56, 0, 10, 49},
        {"Lucia", "26B873F6-CC1D-40BE-8731-CEB39F9629B7", 1040, "5.0", 2, kMotor, "roa/it", 210, 62, 0, 16, 31},
        {"Chicco", "1CCE1224-87D7-412B-BA37-8FC0EFEA794B", 1040, "5.0", 3, kMotor, "roa/it", 296, 64, 0, 9, 11},
        {"Nonna", "B08367E5-F29F-4874-B371-94DB340F6131", 1040, "5.0", 7, kMotor, "roa/it", 180, 46, 16, 31, 41},
        {"Nonno", "EB8178D1-959C-4B05-A02A-CFE25397F811", 1040, "5.0", 8, kMotor, "roa/it", 93, 40, 24, 26, 59},
    };
    return hablantes;
}

}  // namespace ondalis
