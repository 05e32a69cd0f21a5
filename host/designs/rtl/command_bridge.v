// Serial commands to register bus. A command begins with a byte {write, 1'b0, address[5:0]}:
//
//   write = 1   a second byte follows and is written; the answer is 8'h06 (acknowledge)
//   write = 0   the register is read; the answer is its value
//
// Bit 6 of the first byte is reserved: such a byte is answered with 8'h15 (not acknowledged).

`default_nettype none

module command_bridge (
    input  wire       clk,
    input  wire       reset,
    input  wire [7:0] rx_data,
    input  wire       rx_valid,
    output wire       rx_take,
    output reg  [7:0] tx_data,
    output reg        tx_push,
    input  wire       tx_ready,
    output reg  [5:0] bus_address,
    output reg  [7:0] bus_write_data,
    output reg        bus_write,
    output reg        bus_read,
    input  wire [7:0] bus_read_data
);
    localparam [7:0] ACKNOWLEDGE = 8'h06, NOT_ACKNOWLEDGED = 8'h15;
    localparam [1:0] COMMAND = 2'd0, OPERAND = 2'd1, READ = 2'd2, ANSWER = 2'd3;

    reg [1:0] state;

    // A byte is taken only where the state has a use for it.
    assign rx_take = rx_valid && (state == COMMAND || state == OPERAND);

    always @(posedge clk)
        if (reset) begin
            state          <= COMMAND;
            tx_data        <= 8'd0;
            tx_push        <= 1'b0;
            bus_address    <= 6'd0;
            bus_write_data <= 8'd0;
            bus_write      <= 1'b0;
            bus_read       <= 1'b0;
        end else begin
            bus_write <= 1'b0;
            bus_read  <= 1'b0;
            tx_push   <= 1'b0;
            case (state)
                COMMAND:
                    if (rx_valid) begin
                        bus_address <= rx_data[5:0];
                        if (rx_data[6]) begin
                            tx_data <= NOT_ACKNOWLEDGED;
                            state   <= ANSWER;
                        end else if (rx_data[7])
                            state <= OPERAND;
                        else begin
                            bus_read <= 1'b1;
                            state    <= READ;
                        end
                    end
                OPERAND:
                    if (rx_valid) begin
                        bus_write_data <= rx_data;
                        bus_write      <= 1'b1;
                        tx_data        <= ACKNOWLEDGE;
                        state          <= ANSWER;
                    end
                READ: begin
                    tx_data <= bus_read_data;
                    state   <= ANSWER;
                end
                ANSWER:
                    if (tx_ready) begin
                        tx_push <= 1'b1;
                        state   <= COMMAND;
                    end
            endcase
        end
endmodule

`default_nettype wire
