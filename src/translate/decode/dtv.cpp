#include "translate/decode/dtv.h"

#include "translate/decode/text_output.h"

namespace desk {

void decode_dtv(std::string& text, const edid_buffer& trans_buff, bool is_cea_block1) {
    print(text, "Block Tag =", str(trans_buff[128]));
    print_line(text, is_cea_block1 ? ", CEA 861 Extension" : ", NOT CEA 861 Extension");
    if (!is_cea_block1) return;
    print(text, "Revision = ");
    print_digit(text, trans_buff[129]);
    print_line(text);
    const std::uint8_t support = trans_buff[131];
    print_line(text, "Underscan = ", supported(bit(support, 7)));
    print_line(text, "Basic Audio = ", supported(bit(support, 6)));
    print_line(text, "RGB/YCbCr444 = ", supported(bit(support, 5)));
    print_line(text, "RGB/YCbCr422 = ", supported(bit(support, 4)));
    print(text, "Native Format Number =", str(support & 15));
}

} // namespace desk
