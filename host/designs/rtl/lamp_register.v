// Four lamps behind one register.

`default_nettype none

module lamp_register (
    input  wire       clk,
    input  wire       reset,
    input  wire       select,
    input  wire [7:0] write_data,
    input  wire       write,
    output wire [7:0] read_data,
    output reg  [3:0] lamp
);
    always @(posedge clk)
        if (reset)
            lamp <= 4'd0;
        else if (select && write)
            lamp <= write_data[3:0];

    assign read_data = {4'd0, lamp};
endmodule

`default_nettype wire
